#include "output/GridPrintView.h"
#include "output/ListPrintView.h"
#include "output/Reports.h"
#include "support/RecordingCanvas.h"
#include "support/Reports.h"
#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

using Texts = std::vector<std::string>;
using enum TextAlignment;

// The numbers on the pages, one after the other.
Texts numbersOnAllPages(PrintView& view, std::string const& mark)
{
    Texts numbers;
    for (int page = 1, count = view.paginate({}, RecordingCanvas()); page <= count; ++page) {
        for (auto const& text : draw(view, page).textsThatContain(mark))
            numbers.push_back(text);
    }
    return numbers;
}

} // namespace

TEST(ListPrintView, FillsPagesWithoutGapsOrRepeats)
{
    struct Row {
        int measurements;
        int pages;
    };
    for (auto const& [count, pages] :
        {Row {0, 1}, {1, 1}, {58, 1}, {59, 2}, {60, 2}, {99, 2}, {120, 3}}) {
        ListPrintView view("山田", finishedMeasurements(count));
        EXPECT_EQ(view.paginate({}, RecordingCanvas()), pages) << count;
        EXPECT_EQ(view.linesPerPage(), 59);
        Texts expected;
        for (int number = 1; number <= count; ++number)
            expected.push_back(std::to_string(number) + " 回目");
        EXPECT_EQ(numbersOnAllPages(view, " 回目"), expected) << count;
    }
}

TEST(ListPrintView, WritesHeadingsAndCells)
{
    ListPrintView view("山田", finishedMeasurements(60));
    view.paginate({}, RecordingCanvas());
    EXPECT_EQ(view.pageRect(), (PrintRect {72, 72, 451, 698}));
    auto const first = draw(view, 1);
    EXPECT_EQ(first.texts[0], (DrawnText {{72, 72, 130, 11.3}, 8, Left, "氏名"}));
    EXPECT_EQ(first.texts[4], (DrawnText {{72 + 380, 72, 70, 11.3}, 8, Right, "目標圧"}));
    std::vector<DrawnText> const line(first.texts.begin() + 5, first.texts.begin() + 10);
    double const y = 72 + 11.3;
    EXPECT_EQ(line,
        (std::vector<DrawnText> {{{72, y, 130, 11.3}, 8, Left, "山田"},
            {{202, y, 110, 11.3}, 8, Left, "2024年 3月05日 14:07:09"},
            {{312, y, 70, 11.3}, 8, Right, "1 回目"}, {{382, y, 70, 11.3}, 8, Right, "10.0 kPa"},
            {{452, y, 70, 11.3}, 8, Right, "30.0 kPa"}}));
    EXPECT_EQ(draw(view, 2).texts[0].rect.y, 72) << "no heading on later pages";
}

TEST(PrintViews, RefuseAPaperThatHoldsNothing)
{
    struct Row {
        char const* what;
        PrintInfo paper;
        int listPages;
        int gridPages;
    };
    for (auto const& [what, paper, listPages, gridPages] :
        {Row {"a line", {595, 144 + 11.3 * 3 + 0.1}, 1, 0},
            {"no line", {595, 144 + 11.3 * 2.9}, 0, 0},
            {"too narrow a table", {144 + 449, 842}, 0, 1},
            {"one block", {144 + 150, 144 + 185}, 0, 1},
            {"too narrow a block", {144 + 149, 842}, 0, 0},
            {"too low a block", {595, 144 + 184}, 1, 0},
            {"margins wider than the paper", {100, 100}, 0, 0}}) {
        EXPECT_EQ(ListPrintView("", {}).paginate(paper, RecordingCanvas()), listPages) << what;
        EXPECT_EQ(GridPrintView("", finishedMeasurements(1)).paginate(paper, RecordingCanvas()),
            gridPages)
            << what;
    }
}

TEST(GridPrintView, FillsPagesRowByRow)
{
    struct Row {
        int measurements;
        int pages;
    };
    for (auto const& [count, pages] : {Row {1, 1}, {9, 1}, {10, 2}, {20, 3}, {99, 11}}) {
        GridPrintView view("山田", finishedMeasurements(count));
        EXPECT_EQ(view.paginate({}, RecordingCanvas()), pages) << count;
        Texts expected;
        for (int number = 1; number <= count; ++number)
            expected.push_back("計測回数：　" + std::to_string(number) + "回目");
        EXPECT_EQ(numbersOnAllPages(view, "計測回数"), expected) << count;
    }
    GridPrintView view("山田", finishedMeasurements(10));
    view.paginate({}, RecordingCanvas());
    EXPECT_EQ(view.blocksPerPage(), 9);
    EXPECT_EQ(draw(view, 1).frames[5], (PrintRect {72 + 2 * 150 + 5, 72 + 185 + 5, 140, 175}));
    EXPECT_EQ(draw(view, 2).frames, (std::vector<PrintRect> {{77, 77, 140, 175}}));
}

TEST(GridPrintView, WritesABlockFromTheTopDown)
{
    GridPrintView view("山田", finishedMeasurements(1));
    view.paginate({}, RecordingCanvas());
    double const small = 2 * 10 * 5.65 / 8;
    double const large = 2 * 14 * 5.65 / 8;
    double y = 77;
    struct Line {
        double advance;
        double fontSize;
        char const* text;
    };
    auto const texts = draw(view, 1).texts;
    std::size_t index = 0;
    for (auto const& [advance, fontSize, text] :
        {Line {0, 10, "氏名：山田"}, {small, 10, "測定日時：2024年 3月05日"},
            {small, 10, "14:07:09"}, {1.5 * small, 10, "計測回数：　1回目"}, {large, 14, "最大圧"},
            {large, 14, "10.0 kPa"}, {large, 14, "目標圧"}, {large, 14, "30.0 kPa"},
            {1.25 * large, 8, "＜ORV舌圧測定器での測定結果＞"}}) {
        y += advance;
        ASSERT_LT(index, texts.size());
        auto const& drawn = texts[index++];
        EXPECT_EQ(drawn.text, text);
        EXPECT_EQ(drawn.fontSize, fontSize) << text;
        EXPECT_EQ(drawn.alignment, Centre) << text;
        EXPECT_EQ(drawn.rect.x, 77) << text;
        EXPECT_EQ(drawn.rect.width, 140) << text;
        EXPECT_NEAR(drawn.rect.y, y, 1e-9) << text;
    }
    EXPECT_EQ(index, texts.size());
}

TEST(GridPrintView, SumsUpASelectionInOneBlock)
{
    auto const measurements = finishedMeasurements(3);
    GridPrintView view("山田", measurements, {11.0f, 10.0f, 12.0f});
    ASSERT_EQ(view.paginate({}, RecordingCanvas()), 1);
    auto const canvas = draw(view, 1);
    EXPECT_EQ(canvas.frames, (std::vector<PrintRect> {{77, 77, 160, 225}}));
    Texts texts;
    for (auto const& text : canvas.texts)
        texts.push_back(text.text);
    EXPECT_EQ(texts,
        (Texts {"氏名：山田", "測定日時：2024年 3月05日", "14:09:09", "測定データ", "①  ", "10.0",
            "kPa", "②  ", "11.0", "kPa", "③  ", "12.0", "kPa", "平均値:", "11.0", "kPa",
            "最大値:", "12.0", "kPa", "最小値:", "10.0", "kPa", "＜ORV舌圧測定器での測定結果＞"}));
    double const large = 2 * 14 * 5.65 / 8;
    double const firstRow = 77 + 2 * (2 * 10 * 5.65 / 8) + 2 * large;
    std::vector<double> const rows {0, 1, 2, 3.5, 4.5, 5.5};
    for (std::size_t row = 0; row < rows.size(); ++row) {
        auto const* const cells = &canvas.texts[4 + 3 * row];
        EXPECT_NEAR(cells[0].rect.y, firstRow + rows[row] * large, 1e-9);
        EXPECT_EQ(cells[0].rect.width, 60);
        EXPECT_EQ(cells[1].rect.x, 77 + 60);
        EXPECT_EQ(cells[1].rect.width, 40);
        EXPECT_EQ(cells[2].rect.x, 77 + 100);
        EXPECT_EQ(cells[2].rect.width, 30);
        EXPECT_EQ(cells[2].alignment, Right);
    }
    EXPECT_NEAR(canvas.texts.back().rect.y, firstRow + (5.5 + 1.25) * large, 1e-9);
}

TEST(GridPrintView, DrawsTheFullGridOnlyForASelectionWhoseAverageIsZero)
{
    for (auto const average : {0.0f, 0.1f}) {
        GridPrintView view("山田", finishedMeasurements(1), {average, average, average});
        view.paginate({}, RecordingCanvas());
        EXPECT_EQ(draw(view, 1).textsThatContain("計測回数").empty(), average > 0.0f);
    }
}

TEST(Reports, ShowTheMeasurementsOfTheSession)
{
    Session session;
    auto& manager = session.manager;
    manager.username.setValue("山田");
    session.connect();
    for (auto const kind : {ReportKind::List, ReportKind::Grid, ReportKind::Selected})
        EXPECT_FALSE(hasReport(kind, manager));
    session.press({20.0});
    session.press({30.0});
    EXPECT_TRUE(hasReport(ReportKind::List, manager) && hasReport(ReportKind::Grid, manager));
    EXPECT_FALSE(hasReport(ReportKind::Selected, manager));
    manager.measurementList.measurements()[1]->isCounted.setValue(true);
    EXPECT_TRUE(hasReport(ReportKind::Selected, manager));

    struct Row {
        ReportKind kind;
        char const* mark;
        Texts texts;
    };
    for (auto const& [kind, mark, texts] :
        {Row {ReportKind::List, " kPa", {"20.0 kPa", "30.0 kPa", "30.0 kPa", "30.0 kPa"}},
            {ReportKind::Grid, "回目", {"計測回数：　1回目", "計測回数：　2回目"}},
            {ReportKind::Selected, "0.0", {"30.0", "30.0", "30.0", "30.0"}}}) {
        auto const report = makeReport(kind, manager);
        ASSERT_EQ(report->paginate({}, RecordingCanvas()), 1);
        EXPECT_EQ(draw(*report, 1).textsThatContain(mark), texts);
        EXPECT_FALSE(draw(*report, 1).textsThatContain("山田").empty());
    }
}
