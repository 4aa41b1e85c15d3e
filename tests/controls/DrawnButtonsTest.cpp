#include "controls/DopeRadioButton.h"
#include "controls/DropDownButton.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// Dots of exactly this colour.
int dotsOf(QWidget& widget, QColor const& color)
{
    QImage picture(widget.size(), QImage::Format_RGB32);
    picture.fill(QColor(0x1f, 0x29, 0x37));
    widget.render(&picture, {}, {}, QWidget::RenderFlags());
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y) == color ? 1 : 0;
    }
    return count;
}

QColor const red(255, 0, 0);

} // namespace

TEST(DopeRadioButton, ShowsItsTitleInWhiteOrOnItsPictureInRed)
{
    DopeRadioButton button;
    button.setText(QStringLiteral("一覧"));
    button.resize(200, 60);
    EXPECT_GT(dotsOf(button, Qt::white), 10);
    EXPECT_EQ(dotsOf(button, red), 0);
    EXPECT_EQ(dotsOf(button, Qt::black), 0);
    button.setChecked(true);
    EXPECT_GT(dotsOf(button, red), 10);
    EXPECT_EQ(dotsOf(button, Qt::white), 0);
    button.setBgImageName(QStringLiteral("radio_on"));
    auto const picture = Picture::named(QStringLiteral("radio_on")).size();
    EXPECT_GT(dotsOf(button, Qt::black), 0.7 * picture.width() * picture.height())
        << "the picture at its own size";
    EXPECT_LT(dotsOf(button, Qt::black), picture.width() * picture.height());
    EXPECT_GT(dotsOf(button, red), 10);
}

TEST(DropDownButton, GivesItsTitleItsColourWhileEnabled)
{
    DropDownButton button;
    button.setText(QStringLiteral("印刷"));
    button.resize(120, 40);
    EXPECT_EQ(dotsOf(button, red), 0);
    button.setTextColor(red);
    EXPECT_GT(dotsOf(button, red), 10);
    button.setEnabled(false);
    EXPECT_EQ(dotsOf(button, red), 0);
}
