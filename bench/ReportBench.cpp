// The PDF files of the fullest history: 99 measurements as list and as grid.
// QT_QPA_PLATFORM=offscreen build/default/bin/report_bench

#include "output/GridPrintView.h"
#include "output/ListPrintView.h"
#include "printing/PageDrawing.h"
#include "printing/QtPdfRenderer.h"
#include "support/Reports.h"

#include <QApplication>

#include <benchmark/benchmark.h>

using namespace tensio;

namespace {

template<typename View>
void pdfOfAll(benchmark::State& state)
{
    auto const layout = defaultPageLayout();
    QtPdfRenderer const report(layout);
    View view("山田 花子", finishedMeasurements(99));
    for (auto const _ : state)
        benchmark::DoNotOptimize(report.render(view));
}

BENCHMARK(pdfOfAll<ListPrintView>)->Name("list")->Unit(benchmark::kMillisecond);
BENCHMARK(pdfOfAll<GridPrintView>)->Name("grid")->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
