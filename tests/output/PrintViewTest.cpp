#include "output/CoursePrintView.h"
#include "output/CurvesPrintView.h"
#include "output/GridPrintView.h"
#include "output/ListPrintView.h"
#include "support/Page.h"
#include "support/Reports.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <regex>

using namespace tensio;

namespace {

// What the pattern's group stands for on all pages, in the order in which it is drawn; ordinals
// unless another is given.
std::string found(PrintView& view, int pages, char const* pattern = "([0-9]+) ?回目")
{
    std::string found;
    std::regex const expression(pattern);
    for (int page = 1; page <= pages; ++page) {
        for (auto const& line : Page(view, page).lines) {
            if (std::smatch match; std::regex_search(line, match, expression))
                found += match.str(1) + " ";
        }
    }
    return found;
}

} // namespace

TEST(PrintViews, FillPagesWithoutGapsOrRepeatsAndRefuseAPaperThatHoldsNothing)
{
    constexpr PrintInfo a4;
    std::tuple<int, PrintInfo, int, int> const rows[] {{0, a4, 1, 0}, {1, a4, 1, 1}, {9, a4, 1, 1},
        {10, a4, 1, 2}, {58, a4, 1, 7}, {59, a4, 2, 7}, {117, a4, 2, 13}, {118, a4, 3, 14},
        // A line; less than a line; a block; margins wider than the paper.
        {1, {595, 144 + 11.3 * 3 + 0.1}, 2, 0}, {1, {595, 144 + 11.3 * 2.9}, 0, 0},
        {1, {144 + 150, 144 + 185}, 0, 1}, {1, {100, 100}, 0, 0},
        // Too narrow a table; too narrow a block; too low a block.
        {1, {144 + 449, 842}, 0, 1}, {1, {144 + 149, 842}, 0, 0}, {1, {595, 144 + 184}, 1, 0}};
    for (auto const& [count, paper, listPages, gridPages] : rows) {
        std::string expected;
        for (int number = 1; number <= count; ++number)
            expected += std::to_string(number) + " ";
        ListPrintView list("", finishedMeasurements(count));
        EXPECT_EQ(list.paginate(paper, Page()), listPages) << count;
        EXPECT_EQ(found(list, listPages), listPages > 0 ? expected : "");
        GridPrintView grid("", finishedMeasurements(count));
        EXPECT_EQ(grid.paginate(paper, Page()), gridPages) << count;
        EXPECT_EQ(found(grid, gridPages), gridPages > 0 ? expected : "");
        // The sixth block, in the second row.
        EXPECT_TRUE(count < 9 || Page(grid, 1).lines.at(50) == "377.0 262.0 140.0 175.0 frame");
    }
}

TEST(GridPrintView, DrawsABlockForEachMeasurement)
{
    GridPrintView grid("山田 花子", finishedMeasurements(1));
    grid.paginate({}, Page());
    EXPECT_EQ(Page(grid, 1).lines,
        (Page::Lines {"77.0 77.0 140.0 175.0 frame", "77.0 77.0 140.0 14.1 10.0 | 氏名：山田 花子",
            "77.0 91.1 140.0 14.1 10.0 | 測定日時：2024年 3月05日",
            "77.0 105.2 140.0 14.1 10.0 | 14:07:09",
            "77.0 126.4 140.0 14.1 10.0 | 計測回数：　1回目", "77.0 146.2 140.0 19.8 14.0 | 最大圧",
            "77.0 166.0 140.0 19.8 14.0 | 10.0 kPa", "77.0 185.8 140.0 19.8 14.0 | 目標圧",
            "77.0 205.5 140.0 19.8 14.0 | 30.0 kPa",
            "77.0 230.3 140.0 11.3 8.0 | ＜ORV舌圧測定器での測定結果＞"}));
}

TEST(CurvesPrintView, DrawsTheCurvesOfAPageOnOneScale)
{
    constexpr auto inf = std::numeric_limits<float>::infinity();
    auto const measurements = finishedMeasurements(4);
    measurements[0]->pressurePoints = {30.0f, 10.0f};
    measurements[1]->pressurePoints = {NAN, inf, -5.0f};
    measurements[1]->bestPressure = inf;
    measurements[2]->pressurePoints = {60.0f};
    measurements[3]->pressurePoints->assign(12000, 20.0f);
    measurements[3]->pressurePoints->at(6001) = 13.0f;
    measurements[3]->pressurePoints->at(6002) = 25.0f;
    CurvesPrintView view("山田", measurements, false);
    ASSERT_EQ(view.paginate({}, Page()), 2);
    // Axes from 96 to 503 and, for the first curve, from 302 up to 153: 6 s and 60 kPa.
    EXPECT_EQ(found(view, 1, "(.*) line 4"),
        "96.0 302.0 99.4 227.5 102.8 277.2 96.0 522.0 102.8 373.0 106.2 522.0 "
        "96.0 742.0 99.4 593.0 ");
    EXPECT_EQ(found(view, 1, "^([0-9.]+) .*6秒$"), "488.0 488.0 488.0 ") << "below its tick";
    EXPECT_EQ(found(view, 1, "(.*) dot 6"), "102.8 277.2 3.0 102.8 373.0 3.0 ");
    EXPECT_TRUE(found(view, 1, "(.*) line 5").starts_with("96.0 227.5 503.0 227.5 "));
    auto const longest = std::ranges::max(Page(view, 2).lines, {}, &std::string::size);
    EXPECT_LT(std::ranges::count(longest, '.'), 3500) << "what a painter draws at once";
    EXPECT_NE(longest.find(" 299.5 237.4 299.6 177.8 "), std::string::npos) << "no extreme is lost";
    // Two curves; one low one; less.
    for (auto const& [paper, pages] :
        {std::pair {PrintInfo {420, 595}, 2}, {{420, 310}, 4}, {{420, 300}, 0}, {{340, 595}, 0}})
        EXPECT_EQ(view.paginate(paper, Page()), pages);
    CurvesPrintView selection("", finishedMeasurements(3), true);
    EXPECT_EQ(selection.paginate({420, 310}, Page()), 3);
    EXPECT_EQ(found(selection, 3, "< (.*)　[123]回目"), "① ② ③ ");
}

TEST(CoursePrintView, PlotsAndListsAllSessionsOverPages)
{
    auto const at = ManualClock::localTime;
    CoursePrintView view({"山田", false,
        {{at("2026-04-01 10:00:00"), 2, 20.0f, 10.0f, 15.0f},
            {at("2026-04-01 10:30:00"), 0, 0, 0, 30},
            {at("2026-04-01 11:00:00"), 3, 25.0f, INFINITY, 30.0f},
            {at("2026-04-01 11:01:00"), 1, 26.0f, 26.0f, 30.0f}}});
    ASSERT_EQ(view.paginate({}, Page()), 1);
    // Two hours from 96 to 503, 30 kPa from 348 up to 141.
    EXPECT_EQ(found(view, 1, "(.*) line 4"), "96.0 210.0 299.5 175.5 302.9 168.6 ");
    EXPECT_EQ(found(view, 1, "(.*) dot 4"), "96.0 210.0 3.0 299.5 175.5 3.0 302.9 168.6 3.0 ");
    EXPECT_EQ(found(view, 1, "(.*) line 5"),
        "96.0 244.5 197.8 244.5 197.8 141.0 299.5 141.0 299.5 141.0 302.9 141.0 302.9 141.0 "
        "503.0 141.0 ");
    EXPECT_EQ(found(view, 1, "8.0 \\| (.*)"), "26.0 20.0 ") << "25.0 has no room";
    EXPECT_EQ(found(view, 1, " 9.0 [<>] (.*)"),
        "2026年04月01日 〜 2026年04月01日　4回 2026年04月01日 10:00 2回 20.0 kPa 10.0 kPa 15.0 kPa "
        "2026年04月01日 10:30 0回 — — 30.0 kPa 2026年04月01日 11:00 3回 25.0 kPa inf kPa 30.0 kPa "
        "2026年04月01日 11:01 1回 26.0 kPa 26.0 kPa 30.0 kPa ");

    constexpr PrintInfo landscape {842, 595};
    std::tuple<int, PrintInfo, int> const rows[] {{24, {}, 1}, {25, {}, 2}, {66, {}, 2},
        {67, {}, 3}, {13, landscape, 1}, {14, landscape, 2}, {1, {300, 842}, 0},
        {1, {595, 300}, 0}};
    for (auto const& [count, paper, pages] : rows) {
        Course course;
        std::string expected;
        for (int number = 1; number <= count; ++number) {
            auto const* const start
                = number < count ? "2026-04-01 10:00:00" : "2026-05-02 10:00:00";
            course.entries.push_back({at(start), number});
            expected += std::to_string(number) + " ";
        }
        course.isComplete = false;
        CoursePrintView many(course);
        EXPECT_EQ(many.paginate(paper, Page()), pages) << count;
        EXPECT_EQ(found(many, pages, "> ([0-9]+)回$"), pages > 0 ? expected : "");
        EXPECT_EQ(found(many, std::min(pages, 1), "〜 (.*)　"), pages > 0 ? "2026年05月02日 " : "");
        EXPECT_EQ(found(many, pages, "(記録の一部)"), pages > 0 ? "記録の一部 " : "");
    }
}

TEST(DateTicks, AreAsFewAsAPageHasRoomFor)
{
    constexpr std::size_t most = 20;
    for (auto const& [first, last, texts] :
        {std::tuple {"2026-11-20 09:59:59", "2026-11-20 11:00:00", "9:00 10:00 11:00 12:00 "},
            {"2026-12-30 09:00:00", "2027-01-02 00:00:00", "12/30 12/31 1/01 1/02 1/03 "},
            {"2028-02-20 23:00:00", "2028-03-12 01:00:00", "2/20 2/27 3/05 3/12 3/19 "},
            {"2026-09-30 10:00:00", "2027-02-01 10:00:00", "9月 10月 11月 12月 1月 2月 3月 "},
            {"2025-11-30 10:00:00", "2027-01-31 10:00:00",
                "2025/11 2026/02 2026/05 2026/08 2026/11 2027/02 "},
            {"2001-01-01 00:00:00", "2036-04-01 10:00:00",
                "2001/01 2006/01 2011/01 2016/01 2021/01 2026/01 2031/01 2036/01 2041/01 "}}) {
        std::string found;
        for (auto const& tick :
            dateTicks(ManualClock::localTime(first), ManualClock::localTime(last), most))
            found += tick.text + " ";
        EXPECT_EQ(found, texts);
    }
    for (int const hours : {1, 100, 10'000, 1'700'000}) {
        Date const last = Date() + std::chrono::hours(hours);
        for (auto const room : {most, Chart::mostTicks(200.0)}) {
            auto const ticks = dateTicks(Date(), last, room);
            EXPECT_TRUE(ticks.size() <= room && ticks.back().date > last) << hours;
        }
    }
}
