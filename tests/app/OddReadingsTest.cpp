#include "app/MainWindowController.h"
#include "core/Utf16.h"
#include "support/Session.h"

#include <QLabel>
#include <QMenu>

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
        Session session;
        QMenu printMenu;
        MainWindowController controller(
            session.manager, session.runLoop, session.alerts, printMenu);
        controller.window().show();
        session.connect();
        for (auto const& bytes : {record + "+0100X", std::string("+0100X")}) {
            session.port->delegate->serialPortDidReceiveData(bytes);
            // For the sanitizers.
            controller.window().grab();
            session.runLoop.advance(Seconds(2.5));
        }
        session.manager.disconnectAction.apply(Nothing {});
        for (auto const& measurement : session.manager.measurementList.measurements())
            measurement->isCounted.setValue(true);
        auto const* label = controller.window().findChild<QLabel*>(QStringLiteral("averageLabel"));
        EXPECT_EQ(label->text().toStdString(), average.toStdString()) << record;
        session.saving.answer = "file.csv";
        session.manager.saveCsv();
        EXPECT_NE(session.saving.written.find(encodeUtf16("0.05\t" + cell + "\t").substr(2)),
            std::string::npos)
            << record;
    }
}
