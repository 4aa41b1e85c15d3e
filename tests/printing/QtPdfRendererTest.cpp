#include "printing/QtPdfRenderer.h"

#include "output/ListPrintView.h"
#include "printing/PageDrawing.h"
#include "printing/QtPrintCanvas.h"
#include "support/PdfText.h"
#include "support/Reports.h"
#include "support/Ui.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

using namespace tensio;

TEST(QtPdfRenderer, MakesFilesThatCanBeSearched)
{
    auto layout = defaultPageLayout();
    // What lay any further to the right would be off the paper.
    layout.setMargins({140.0, 72.0, 5.0, 72.0});
    ListPrintView list("目山一二 舌子", finishedMeasurements(99));
    auto const pdf = QtPdfRenderer(layout).render(list).value_or("");
    auto const text = pdfText(pdf);
    EXPECT_TRUE(text.starts_with("氏名 測定日時 計測回数 最大圧 目標圧 "
                                 "目山一二 舌子 2024年 3月05日 14:07:09 1 回目 10.0 kPa "))
        << text;
    EXPECT_EQ(pdfText(pdf, {"-x", "0", "-y", "0", "-W", "139", "-H", "842"}), "") << "the margin";
    QString const lowerHalf = "-x 0 -y 421 -W 595 -H 421";
    EXPECT_TRUE(pdfText(pdf, lowerHalf.split(u' ')).ends_with(" 99 回目 17.0 kPa 30.0 kPa"));

    list.setSimulated(true);
    for (auto const& [top, pageEnd] : {std::pair {72.0, " 17.0 kPa 30.0 kPa"},
             {4.0, "模擬装置の値です（実際の測定ではありません）"}}) {
        layout.setMargins({40.0, top, 40.0, 72.0});
        auto const marked = QtPdfRenderer(layout).render(list).value_or("");
        EXPECT_NE(marked.find("\x6a\x21\x64\xec"), std::string::npos) << "模擬 in the title";
        auto const markedText = pdfText(marked);
        EXPECT_EQ(markedText.starts_with("模擬装置の値です"), top > 4.0);
        EXPECT_TRUE(markedText.ends_with(pageEnd)) << "in the larger margin: " << markedText;
    }
}

TEST(QtPrintCanvas, AlignsATextInItsCellAndCondensesALongOne)
{
    for (auto const& [text, alignment, left] : {std::tuple {"山", TextAlignment::Left, 21},
             {"山", TextAlignment::Centre, 34}, {"山", TextAlignment::Right, 47},
             {"齋藤鷹一郎左衛門尉殿👨‍👩‍👧‍👦", TextAlignment::Right,
                 20}}) {
        QImage paper(80, 64, QImage::Format_RGB32);
        paper.fill(Qt::white);
        auto const blank = paper.copy();
        QPainter painter(&paper);
        QtPrintCanvas(&painter).drawText({20.0, 20.0, 40.0, 24.0}, {14.0, alignment}, text);
        auto const ink = difference(paper, blank);
        EXPECT_NEAR(ink.left(), left, 1) << text;
        EXPECT_TRUE(QRect(20, 20, 40, 24).contains(ink)) << text;
    }
}
