#include "core/Utf16.h"
#include "support/Desk.h"

#include <QLabel>

#include <gtest/gtest.h>

using namespace tensio;

TEST(OddReadings, HarmNeitherWindowNorAverageNorFile)
{
    struct Row {
        std::string record;
        QString average;
        std::string cell;
    };
    std::vector<Row> const rows {{"+inf0X", QStringLiteral("inf"), "inf"},
        {"+nan0X", QStringLiteral("10.0"), "nan"}, {"-inf0X", QStringLiteral("10.0"), "-inf"},
        {"+1e90X", QStringLiteral("500000000.0"), "1000000000.0"}};
    for (auto const& [record, average, cell] : rows) {
        Desk desk;
        desk.connect();
        for (auto const& bytes : {record + "+0100X", std::string("+0100X")}) {
            desk.port->delegate->serialPortDidReceiveData(bytes);
            desk.window.grab(); // for the sanitizers
            desk.runLoop.advance(Seconds(2.5));
        }
        desk.finish();
        for (auto const& measurement : desk.manager.measurementList.measurements())
            measurement->isCounted.setValue(true);
        EXPECT_EQ(find<QLabel>(desk.window, "averageLabel").text(), average) << record;
        desk.saving.answer = "file.csv";
        desk.manager.saveCsv();
        EXPECT_NE(desk.saving.written.find(encodeUtf16("0.05\t" + cell + "\t").substr(2)),
            std::string::npos)
            << record;
    }
}
