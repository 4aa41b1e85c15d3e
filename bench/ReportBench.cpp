// The PDF files of the fullest history, 99 measurements as list, as grid and as curves of that many
// points, and its CSV file, UTF-16 included; 12,000 points are ten minutes. And the preview of a
// course of 100 sessions, from its opening until it is painted.
// QT_QPA_PLATFORM=offscreen build/default/bin/report_bench

#include "core/CsvBuilder.h"
#include "core/Utf16.h"
#include "output/CoursePrintView.h"
#include "output/CurvesPrintView.h"
#include "output/GridPrintView.h"
#include "output/ListPrintView.h"
#include "printing/PageDrawing.h"
#include "printing/PrintPreview.h"
#include "printing/QtPdfRenderer.h"
#include "printing/QtPrintPanels.h"
#include "support/Reports.h"
#include "support/Session.h"

#include <QCoreApplication>
#include <QWidget>

#include <benchmark/benchmark.h>

using namespace tensio;

namespace {

template<typename View>
void pdfOfAll(benchmark::State& state)
{
    auto const layout = defaultPageLayout();
    QtPdfRenderer const report(layout);
    View view("山田 花子", finishedMeasurements(99));
    while (state.KeepRunning())
        benchmark::DoNotOptimize(report.render(view));
}

Measurements measurementsOf(std::int64_t points)
{
    auto measurements = finishedMeasurements(99);
    for (auto const& measurement : measurements) {
        for (int point = 0; point < points; ++point)
            measurement->pressurePoints->push_back(static_cast<float>(20 + 7 * point % 11));
    }
    return measurements;
}

void pdfOfCurves(benchmark::State& state)
{
    auto const layout = defaultPageLayout();
    QtPdfRenderer const report(layout);
    CurvesPrintView view("山田 花子", measurementsOf(state.range(0)), false);
    while (state.KeepRunning())
        benchmark::DoNotOptimize(report.render(view));
}

void csvOfCurves(benchmark::State& state)
{
    auto const measurements = measurementsOf(state.range(0));
    while (state.KeepRunning())
        benchmark::DoNotOptimize(
            encodeUtf16(csvFile("山田 花子", "2024/03/05 14:07").build(measurements)));
}

void previewOfCourse(benchmark::State& state)
{
    Course course {"山田 花子", false, {}};
    for (int week = 0; week < 100; ++week)
        course.entries.push_back({Date() + std::chrono::hours(168 * week), 8,
            static_cast<float>(20 + 7 * week % 11), 18.0f, 30.0f});
    Session session;
    QtPrintPanels panels;
    auto layout = defaultPageLayout();
    QWidget parent;
    while (state.KeepRunning()) {
        PrintPreview preview({session.manager, panels, session.alerts, layout}, parent);
        preview.showReport(std::make_unique<CoursePrintView>(course), QStringLiteral("経過"));
        QCoreApplication::processEvents();
    }
}

BENCHMARK(pdfOfAll<ListPrintView>)->Name("list")->Unit(benchmark::kMillisecond);
BENCHMARK(pdfOfAll<GridPrintView>)->Name("grid")->Unit(benchmark::kMillisecond);
BENCHMARK(pdfOfCurves)->Name("curves")->Arg(80)->Arg(12000)->Unit(benchmark::kMillisecond);
BENCHMARK(csvOfCurves)->Name("csv")->Arg(6000)->Arg(12000)->Unit(benchmark::kMillisecond);
BENCHMARK(previewOfCourse)->Name("course")->Unit(benchmark::kMillisecond);

} // namespace
