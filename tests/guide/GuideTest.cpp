#include "guide/GuideView.h"

#include <QRegularExpression>
#include <QScrollBar>

#include <gtest/gtest.h>

using namespace tensio;

TEST(Guide, EveryLinkAndPictureIsThere)
{
    QRegularExpression const part(QStringLiteral("<(?:a|img) (name|href|src)=\"([^\"]*)\""));
    QStringList places;
    QList<QUrl> links;
    QVariantList pictures;
    for (auto const& page :
        {QStringLiteral("qrc:/help/guide.ja.md"), QStringLiteral("qrc:/help/install.ja.md")}) {
        GuideView view(nullptr);
        view.setSource(QUrl(page));
        view.resize(300, 200);
        view.show();
        EXPECT_EQ(view.verticalScrollBar()->value(), 0);
        places << page;
        for (auto const& match : part.globalMatch(view.toHtml())) {
            auto const name = match.captured(2);
            if (match.captured(1) == u"name")
                places << page + u'#' + name;
            else if (match.captured(1) == u"href")
                links << view.source().resolved(QUrl(name));
            else
                pictures << view.document()->resource(QTextDocument::ImageResource, name);
        }
    }
    EXPECT_GT(links.size(), 20);
    for (auto const& picture : pictures)
        EXPECT_FALSE(picture.value<QImage>().isNull());
    for (auto const& link : links)
        EXPECT_TRUE(places.contains(link.toString())) << link.toString().toStdString();
}
