// A CSV file of 99 measurements with that many points each, UTF-16 included; the largest is ten
// minutes each. /usr/bin/time -v build/default/bin/csv_bench also prints the peak of memory.

#include "core/CsvBuilder.h"
#include "core/Utf16.h"

#include <benchmark/benchmark.h>

using namespace tensio;

namespace {

void buildCsv(benchmark::State& state)
{
    Measurements measurements;
    for (int number = 1; number <= 99; ++number) {
        auto measurement = std::make_shared<Measurement>(number);
        measurement->bestPressure = 38.2f;
        measurement->targetPressure = 30.0f;
        measurement->timeStamp = Date();
        measurement->pressurePoints
            = std::vector<float>(static_cast<std::size_t>(state.range(0)), 31.4f);
        measurements.push_back(std::move(measurement));
    }
    while (state.KeepRunning())
        benchmark::DoNotOptimize(
            encodeUtf16(csvOfAll("山田 花子", "2024/03/05 14:07", measurements)));
}

BENCHMARK(buildCsv)->Arg(3000)->Arg(6000)->Arg(12000)->Unit(benchmark::kMillisecond);

} // namespace
