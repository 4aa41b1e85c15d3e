#include "guide/GuideView.h"
#include "guide/HelpWindow.h"

#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>

#include <gtest/gtest.h>

using namespace tensio;

TEST(Guide, EveryLinkAndPictureIsThere)
{
    QStringList places;
    QList<QUrl> links;
    for (auto const& page :
        {QStringLiteral("qrc:/help/guide.ja.md"), QStringLiteral("qrc:/help/install.ja.md")}) {
        GuideView view(nullptr);
        view.setSource(QUrl(page));
        view.resize(300, 200);
        view.show();
        EXPECT_EQ(view.verticalScrollBar()->value(), 0);
        places << page;
        for (auto block = view.document()->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                auto const format = part.fragment().charFormat();
                for (auto const& name : format.anchorNames())
                    places << page + u'#' + name;
                if (!format.anchorHref().isEmpty())
                    links << view.source().resolved(QUrl(format.anchorHref()));
                if (auto const image = format.toImageFormat(); image.isValid()) {
                    QUrl const name(image.name());
                    auto const picture
                        = view.document()->resource(QTextDocument::ImageResource, name);
                    EXPECT_FALSE(picture.value<QImage>().isNull()) << image.name().toStdString();
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
    HelpWindow const help;
    auto const& view = *help.findChild<GuideView*>();
    auto const buttons = help.findChildren<QPushButton*>();
    buttons.back()->click();
    EXPECT_EQ(view.source().fileName(), QStringLiteral("install.ja.md"));
    buttons.front()->click();
    EXPECT_EQ(view.source().fileName(), QStringLiteral("guide.ja.md"));
}
