#include "core/SavingMessages.h"
#include "core/Utf16.h"
#include "output/ListPrintView.h"
#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Finished : Session {
    explicit Finished(std::vector<double> const& presses = {20.0, 31.5, 25.0})
    {
        connect();
        manager.username.setValue("山田");
        for (auto const pressure : presses) {
            press({pressure});
            clock.date += std::chrono::minutes(1);
        }
        manager.disconnectAction.apply(Nothing {});
        saving.answer = "/folder/file";
    }

    void select(std::size_t index)
    {
        manager.measurementList.measurements()[index]->isCounted.setValue(true);
    }
};

using Texts = std::vector<std::string>;

} // namespace

TEST(Saving, WritesAllMeasurementsUnderTheTimeOfTheLast)
{
    Finished session;
    session.manager.saveCsvAction.apply(Nothing {});
    EXPECT_EQ(session.saving.log, (Texts {"panel csv", "write /folder/file"}));
    EXPECT_EQ(session.saving.written,
        encodeUtf16(CsvReport().all(
            "山田", "2024/03/05 14:09", session.manager.measurementList.measurements())));
    EXPECT_TRUE(session.alerts.messages.empty());
    EXPECT_FALSE(session.manager.saveCsvAction.isExecuting());
}

TEST(Saving, WritesTheSelectionUnderTheTimeOfItsLast)
{
    Finished session;
    session.select(1);
    session.select(0);
    session.manager.saveSelectedCsv();
    auto const selection = session.manager.measurementList.counted();
    EXPECT_EQ(session.saving.written,
        encodeUtf16(
            CsvReport().selected("山田", "2024/03/05 14:08", selection, 25.75f, 20.0f, 31.5f)));
}

TEST(Saving, NothingIsWrittenWhenThereIsNothingOrTheUserCancels)
{
    Finished empty(std::vector<double> {});
    empty.manager.saveCsv();
    empty.manager.saveSelectedCsv();
    EXPECT_TRUE(empty.saving.log.empty());
    Finished cancelled;
    cancelled.saving.answer.reset();
    cancelled.manager.saveCsv();
    cancelled.manager.saveScreenshot();
    EXPECT_EQ(
        cancelled.saving.log, (Texts {"panel csv", "capture 0.0,1080.0,0.0,0.0", "panel png"}));
}

TEST(Saving, AFailureIsToldOnceAndTheMeasurementsStay)
{
    Finished session;
    session.saving.diskIsFull = true;
    session.manager.saveCsv();
    EXPECT_EQ(session.alerts.messages, Texts {"保存に失敗しました。"});
    session.saving.diskIsFull = false;
    session.manager.saveCsv();
    EXPECT_FALSE(session.saving.written.empty());

    session.saving.diskIsFull = true;
    session.saving.clipboard = "picture";
    session.manager.saveScreenshot();
    EXPECT_EQ(session.alerts.messages.size(), 1U)
        << "a picture that cannot be written is not reported";
}

TEST(Saving, CapturesTheWindowBeforeThePanelAndWritesWhatTheClipboardHolds)
{
    struct Row {
        ScreenRect frame;
        std::string capture;
    };
    std::vector<Row> const rows {{{120.0, 200.0, 900.0, 640.0}, "capture 120.0,240.0,900.0,640.0"},
        {{57.5, 0.25, 1040.0, 692.5}, "capture 57.5,387.25,1040.0,692.5"}};
    for (auto const& [frame, capture] : rows) {
        Finished session;
        session.saving.frame = frame;
        session.manager.saveScreenshotAction.apply(Nothing {});
        EXPECT_EQ(session.saving.log, (Texts {capture, "panel png"}))
            << "no picture on the clipboard";
        session.saving.clipboard = "picture";
        session.manager.saveScreenshotAction.apply(Nothing {});
        EXPECT_EQ(session.saving.written, "picture");
    }
}

TEST(Saving, WritesAReportAsPdfOrTellsWhyNot)
{
    ListPrintView view("山田", {});
    Finished session;
    session.manager.saveViewAsPdf(view);
    EXPECT_EQ(session.saving.log, (Texts {"panel pdf", "write /folder/file"}));
    EXPECT_EQ(session.saving.written, typeid(ListPrintView).name());
    session.saving.diskIsFull = true;
    session.manager.saveViewAsPdf(view);
    session.saving.diskIsFull = false;
    session.pdfRenderer.fails = true;
    session.manager.saveViewAsPdf(view);
    EXPECT_EQ(session.alerts.messages, (Texts {saveFailedMessage, saveFailedMessage}));

    session.saving.log.clear();
    session.pdfRenderer.hasRoom = false;
    session.manager.saveViewAsPdf(view);
    EXPECT_EQ(session.alerts.messages.back(), paperTooSmallMessage);
    EXPECT_TRUE(session.saving.log.empty()) << "no panel for a file that cannot be";
}

TEST(Utf16, HasAMarkAndLittleEndianUnits)
{
    EXPECT_EQ(encodeUtf16("A\r\n"),
        std::string("\xff\xfe"
                    "A\0\r\0\n\0",
            8));
    EXPECT_EQ(encodeUtf16("氏𠮷"), std::string("\xff\xfe\x0f\x6c\x42\xd8\xb7\xdf", 8));
}
