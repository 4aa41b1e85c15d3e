#include "app/MainWindowController.h"
#include "core/Utf16.h"
#include "output/ListPrintView.h"
#include "panels/HistorySlice.h"
#include "printing/PdfReport.h"
#include "support/Session.h"

#include <QLabel>
#include <QPageLayout>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

TEST(OddReadings, HarmNeitherGaugeNorGraphNorAverageNorFiles)
{
    struct Row {
        std::string record;
        QString best;
        QString average;
        std::string cell;
    };
    std::vector<Row> const rows {{"+inf0X", u"inf"_qs, u"inf"_qs, "inf"},
        {"+nan0X", u"10.0"_qs, u"10.0"_qs, "nan"}, {"-inf0X", u"10.0"_qs, u"10.0"_qs, "-inf"},
        {"+1e90X", u"1000000000.0"_qs, u"500000000.0"_qs, "1000000000.0"},
        {"+0x15X", u"10.0"_qs, u"10.0"_qs, "1.5"}, {"+-055X", u"10.0"_qs, u"10.0"_qs, "-4.5"}};
    for (auto const& [record, best, average, cell] : rows) {
        Session session;
        MainWindowController controller(session.manager, session.runLoop, session.alerts);
        auto& window = controller.window();
        window.show();
        session.connect();
        for (auto const& bytes : {record + "+0100X", std::string("+0100X")}) {
            session.port->delegate->serialPortDidReceiveData(bytes);
            EXPECT_FALSE(window.grab().isNull()) << record;
            session.runLoop.advance(Seconds(2.5));
        }
        session.manager.disconnectAction.apply(Nothing {});
        for (auto* tile : window.findChildren<HistorySlice*>())
            QTest::mousePress(tile, Qt::LeftButton);
        EXPECT_FALSE(window.grab().isNull()) << record;
        EXPECT_EQ(window.findChildren<HistorySlice*>().front()->pressureText(), best);
        EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("averageLabel"))->text(), average);
        session.saving.answer = "file.csv";
        session.manager.saveCsv();
        EXPECT_NE(session.saving.written.find(encodeUtf16("0.05\t" + cell + "\t").substr(2)),
            std::string::npos)
            << record;
        ListPrintView list("山田", session.manager.measurementList.measurements());
        QPageLayout const paper(
            QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(72.0, 72.0, 72.0, 72.0));
        auto const pdf = PdfReport(paper).render(list);
        EXPECT_TRUE(pdf && pdf->starts_with("%PDF") && pdf->size() > 1000) << record;
    }
}
