#include "guide/GuideView.h"
#include "guide/HelpWindow.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

using namespace tensio;

TEST(Guide, EveryLinkAndPictureIsThere)
{
    QStringList places;
    QList<QUrl> links;
    for (QString const page : {"qrc:/help/guide.ja.md", "qrc:/help/install.ja.md"}) {
        GuideView view(nullptr);
        view.setSource(QUrl(page));
        view.resize(300, 200);
        view.show();
        EXPECT_EQ(view.verticalScrollBar()->value(), 0);
        EXPECT_FALSE(view.toPlainText().contains(QRegularExpression("。 [^\\x00-\\x7f]")));
        places << page;
        for (auto block = view.document()->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                auto const format = part.fragment().charFormat();
                for (auto const& name : format.anchorNames())
                    places << page + u'#' + name;
                if (!format.anchorHref().isEmpty())
                    links << view.source().resolved(QUrl(format.anchorHref()));
                if (auto const image = format.toImageFormat(); image.isValid()) {
                    auto const file = view.source().resolved(QUrl(image.name())).path();
                    EXPECT_FALSE(QImage(u':' + file).isNull()) << file.toStdString();
                }
            }
        }
    }
    EXPECT_GT(links.size(), 20);
    for (auto const& link : links)
        EXPECT_TRUE(places.contains(link.toString())) << link.toString().toStdString();
}

TEST(Guide, ButtonsTurnToItsPagesAndBack)
{
    HelpWindow help;
    EXPECT_FALSE(help.testAttribute(Qt::WA_QuitOnClose)) << "the program ends without it";
    help.show();
    auto const& view = *help.findChild<GuideView*>();
    auto const buttons = help.findChildren<QPushButton*>();
    buttons.at(2)->click(); // 困ったとき
    EXPECT_GT(view.verticalScrollBar()->value(), 0);
    buttons.back()->click();
    EXPECT_EQ(view.source().fileName(), "install.ja.md");
    buttons.front()->click();
    EXPECT_EQ(view.source().fileName(), "guide.ja.md");
}

TEST(Guide, PicturesComeIntoSightNoWiderThanTheView)
{
    GuideView view(nullptr);
    view.resize(300, 2000);
    view.setSource(QUrl("qrc:/help/guide.ja.md"));
    view.show();
    EXPECT_LE(view.document()->size().width(), view.viewport()->width() + 1);
    // Only the pictures have green.
    EXPECT_TRUE(QTest::qWaitFor([&] {
        auto const page = view.grab().toImage();
        int green = 0;
        for (int at = 0; at < page.width() * page.height(); ++at) {
            auto const pixel = page.pixel(at % page.width(), at / page.width());
            green += qGreen(pixel) > qBlue(pixel) + 60;
        }
        return green > 0;
    }));
}
