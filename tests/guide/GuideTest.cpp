#include "guide/GuideView.h"
#include "guide/HelpWindow.h"

#include <QRegularExpression>
#include <QScrollBar>
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

TEST(Guide, DoesNotKeepTheProgramFromEnding)
{
    EXPECT_FALSE(HelpWindow().testAttribute(Qt::WA_QuitOnClose));
}

TEST(Guide, ItsPicturesAreNoWiderThanTheView)
{
    GuideView view(nullptr);
    view.resize(300, 2000);
    view.setSource(QUrl("qrc:/help/guide.ja.md"));
    view.show();
    EXPECT_LE(view.document()->size().width(), view.viewport()->width() + 1);
}
