#include "core/SavingMessages.h"
#include "core/Utf16.h"
#include "output/ListPrintView.h"
#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

using Texts = std::vector<std::string>;

struct Finished : Session {
    ListPrintView view {"", {}};

    Finished()
    {
        connect();
        manager.username.setValue("山田");
        for (auto const pressure : {9.0, 31.5, 25.2, 20.0, 28.0}) {
            press({pressure});
            clock.date += std::chrono::minutes(1);
        }
        for (std::size_t const index : {3U, 2U, 1U})
            manager.measurementList.measurements()[index]->isCounted.setValue(true);
        saving.frame = {57.5, 0.25, 1040.0, 692.5};
        saving.picture = "picture";
    }
};

} // namespace

TEST(Saving, WritesTheFileUnlessTheUserCancelsAndReportsAFailure)
{
    // What is done, what it asks for first, how the file begins.
    std::tuple<std::function<void(Finished&)>, Texts, std::string, Texts> const saves[] {
        {[](Finished& session) { session.manager.saveCsvAction.apply(Nothing {}); }, {"panel csv"},
            encodeUtf16("氏名\t山田\r\n測定日時\t2024/03/05 14:11\r\n"), {saveFailedMessage}},
        {[](Finished& session) { session.manager.saveSelectedCsv(); }, {"panel csv"},
            encodeUtf16(
                "氏名\t山田\r\n測定日時\t2024/03/05 14:10\r\n\r\n選択した最大圧データ(kPa)\r\n"
                "①\t31.5\tmax\r\n②\t25.2\t\r\n③\t20.0\tmin\r\n\r\n"
                "選択した最大圧データの平均値(kPa)\r\n\t25.6\r\n"),
            {saveFailedMessage}},
        // The picture comes first, so that the panel is not on it.
        {[](Finished& session) { session.manager.saveScreenshotAction.apply(Nothing {}); },
            {"capture 57.5,387.25,1040.0,692.5", "panel png"}, "picture", {}},
        {[](Finished& session) { session.manager.saveViewAsPdf(session.view); }, {"panel pdf"},
            typeid(ListPrintView).name(), {saveFailedMessage}}};

    for (auto const& [run, panel, written, alerts] : saves) {
        Finished session;
        run(session);
        EXPECT_EQ(session.saving.log, panel) << "cancelled";
        session.saving.answer = "/folder/file";
        session.saving.diskIsFull = true;
        run(session);
        EXPECT_EQ(session.manager.savedPath().value(), "");
        EXPECT_FALSE(session.manager.isSavedAsCsv.value());
        session.saving.diskIsFull = false;
        run(session);
        EXPECT_TRUE(session.saving.written.starts_with(written)) << session.saving.written;
        EXPECT_EQ(session.saving.log.back(), "write /folder/file");
        EXPECT_EQ(session.alerts.messages, alerts) << "one for the full disk";
        EXPECT_EQ(session.manager.savedPath().value(), "/folder/file");
        EXPECT_EQ(session.manager.isSavedAsCsv.value(), &run == &std::get<0>(saves[0]));
        session.finish();
        session.connect();
        EXPECT_EQ(session.manager.savedPath().value(), "");
        EXPECT_FALSE(session.manager.isSavedAsCsv.value());
    }
}

TEST(Saving, AsksForNoFileThatCannotBe)
{
    Finished session;
    session.pdfRenderer.hasRoom = false;
    session.manager.saveViewAsPdf(session.view);
    EXPECT_EQ(session.alerts.messages, Texts {paperTooSmallMessage});
    session.manager.measurementList.reset();
    session.manager.saveCsv();
    session.manager.saveSelectedCsv();
    EXPECT_TRUE(session.saving.log.empty());
    session.pdfRenderer.hasRoom = session.pdfRenderer.fails = true;
    session.saving.answer = "/folder/file";
    session.saving.picture.reset();
    session.manager.saveViewAsPdf(session.view);
    session.manager.saveScreenshot();
    EXPECT_EQ(session.saving.log.back(), "panel png") << "neither PDF nor picture could be made";
    EXPECT_EQ(session.alerts.messages.back(), saveFailedMessage);
}

TEST(Utf16, HasAMarkAndLittleEndianUnits)
{
    EXPECT_EQ(encodeUtf16("A\n氏𠮷"),
        std::string("\xff\xfe\x41\x00\x0a\x00\x0f\x6c\x42\xd8\xb7\xdf", 12));
}
