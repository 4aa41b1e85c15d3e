#include "printing/PdfReport.h"

#include "output/GridPrintView.h"
#include "output/ListPrintView.h"
#include "printing/PageDrawing.h"
#include "printing/PainterCanvas.h"
#include "support/PdfText.h"
#include "support/Reports.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <gtest/gtest.h>

using namespace tensio;

namespace {

std::string pdfOf(PrintView& view)
{
    auto const layout = defaultPageLayout();
    return PdfReport(layout).render(view).value_or("");
}

std::ptrdiff_t countOf(std::string const& text, std::string const& part)
{
    std::ptrdiff_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

// Draws as the program does, and notes where text may be.
class CellCanvas : public PainterCanvas {
public:
    CellCanvas(QPainter& painter, QRegion& cells)
        : PainterCanvas(&painter)
        , m_painter(painter)
        , m_cells(cells)
    {
    }

    void drawText(
        PrintRect rect, double fontSize, TextAlignment alignment, std::string const& text) override
    {
        m_cells += m_painter.transform()
                       .mapRect(QRectF(rect.x, rect.y, rect.width, rect.height))
                       .toAlignedRect();
        PainterCanvas::drawText(rect, fontSize, alignment, text);
    }
    // A frame's ink would hide what crosses it.
    void strokeRect(PrintRect /*rect*/) override { }

private:
    QPainter& m_painter;
    QRegion& m_cells;
};

// Dots of ink outside all cells.
int strayInk(PrintView& view, int page)
{
    constexpr double dotsPerPoint = 150.0 / 72.0;
    QImage paper(1240, 1755, QImage::Format_Grayscale8);
    paper.fill(Qt::white);
    QRegion cells;
    {
        QPainter painter(&paper);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(dotsPerPoint, dotsPerPoint);
        CellCanvas canvas(painter, cells);
        view.rectForPage(page);
        view.draw(canvas);
        painter.resetTransform();
        painter.setClipRegion(cells);
        painter.fillRect(paper.rect(), Qt::white);
    }
    int stray = 0;
    for (int y = 0; y < paper.height(); ++y)
        stray += static_cast<int>(std::count_if(paper.constScanLine(y),
            paper.constScanLine(y) + paper.width(), [](uchar ink) { return ink != 255; }));
    return stray;
}

} // namespace

TEST(PdfReport, SaysWhatTheMeasurementsHold)
{
    ListPrintView list("目山一二 舌子", finishedMeasurements(99));
    auto const text = pdfText(pdfOf(list));
    EXPECT_EQ(text.rfind("氏名 測定日時 計測回数 最大圧 目標圧 "
                         "目山一二 舌子 2024年 3月05日 14:07:09 1 回目 10.0 kPa 30.0 kPa "
                         "目山一二 舌子 2024年 3月05日 14:08:09 2 回目 11.0 kPa 30.0 kPa ",
                  0),
        0U)
        << text.substr(0, 200);
    EXPECT_EQ(countOf(text, "目山一二 舌子 2024年 3月05日"), 99);
    EXPECT_NE(text.find(" 15:45:09 99 回目 17.0 kPa 30.0 kPa"), std::string::npos);
}

TEST(PdfReport, SaysWhatBlocksHold)
{
    GridPrintView grid("山田 花子", finishedMeasurements(1));
    EXPECT_EQ(pdfText(pdfOf(grid)),
        "氏名：山田 花子 測定日時：2024年 3月05日 14:07:09 計測回数： 1回目 最大圧 10.0 kPa 目標圧 "
        "30.0 kPa ＜ORV舌圧測定器での測定結果＞");
    GridPrintView selection("山田 花子", finishedMeasurements(2), {10.5f, 10.0f, 11.0f});
    EXPECT_EQ(pdfText(pdfOf(selection)),
        "氏名：山田 花子 測定日時：2024年 3月05日 14:08:09 測定データ ① 10.0 kPa ② 11.0 kPa "
        "平均値: "
        "10.5 kPa 最大値: 11.0 kPa 最小値: 10.0 kPa ＜ORV舌圧測定器での測定結果＞");
    GridPrintView many("山田", finishedMeasurements(99));
    EXPECT_EQ(countOf(pdfText(pdfOf(many)), "氏名：山田"), 99);
}

TEST(PdfReport, KeepsEveryTextInsideItsCell)
{
    QString const family = QString::fromUtf8("👨‍👩‍👧‍👦").repeated(10);
    for (auto const& name : {std::string("山"), std::string("齋藤鷹一郎左衛門尉殿"),
             std::string("WWWWWWWWWW"), family.toStdString()}) {
        for (int const count : {1, 3, 59, 60, 99}) {
            ListPrintView list(name, finishedMeasurements(count));
            GridPrintView grid(name, finishedMeasurements(count));
            GridPrintView selection(
                name, finishedMeasurements(std::min(count, 3)), {100.0f, 100.0f, 100.0f});
            for (PrintView* view : std::initializer_list<PrintView*> {&list, &grid, &selection}) {
                int const pages = view->paginate({}, PainterCanvas());
                for (int const page : {1, pages})
                    EXPECT_EQ(strayInk(*view, page), 0) << name << ' ' << count << ' ' << page;
            }
        }
    }
}

TEST(PdfReport, PaginatesForThePaperInForce)
{
    GridPrintView grid("山田", finishedMeasurements(10));
    QPageLayout layout = defaultPageLayout();
    PdfReport const report(layout);
    auto const pages = [&] { return countOf(report.render(grid).value_or(""), "/Type /Page\n"); };
    EXPECT_EQ(pages(), 2);
    layout.setPageSize(QPageSize(QPageSize::A3), layout.minimumMargins());
    EXPECT_EQ(pages(), 1);
    layout.setPageSize(QPageSize(QPageSize::A8));
    EXPECT_FALSE(report.hasRoomFor(grid));
    EXPECT_FALSE(report.render(grid).has_value());
}
