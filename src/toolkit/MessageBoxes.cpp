#include "toolkit/MessageBoxes.h"

#include "toolkit/OnEvent.h"
#include "toolkit/WindowSize.h"

#include <QLabel>
#include <QLayout>
#include <QMessageBox>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// Of the typeface at scale 1, in pixels.
constexpr double designFontSize = 14.0;
constexpr QMargins designMargins {24, 20, 24, 20};
constexpr double shortestLine = 264.0;
// The icon and what is between it, the text and the edges.
constexpr double besideText = 120.0;

// Qt makes no message box wider.
int largestWidth(QMessageBox const& box)
{
    int const screen = availableSize(box).width();
    return screen <= 1024 ? screen : std::min(screen - 480, 1000);
}

void layOut(QMessageBox& box)
{
    // A name may look like markup.
    box.setTextFormat(Qt::PlainText);
    auto& label = *box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    auto const scale = label.fontInfo().pixelSize() / designFontSize;
    box.layout()->setContentsMargins(designMargins * scale);
    auto longest = static_cast<int>(shortestLine * scale);
    for (auto const& line : box.text().split(u'\n'))
        longest = std::max(longest, label.fontMetrics().horizontalAdvance(line) + 2);
    auto const room = static_cast<int>(largestWidth(box) - besideText * scale);
    label.setMinimumWidth(std::min(longest, room));
}

} // namespace

void layOutMessageBoxes(QObject& application)
{
    // By then it has its typeface, and it takes its size next.
    onEvent(application, {QEvent::Show}, application, [](QObject& receiver) {
        if (auto* box = qobject_cast<QMessageBox*>(&receiver))
            layOut(*box);
    });
}

} // namespace tensio
