#include "output/PageHeading.h"

namespace tensio {

void drawHeading(PrintCanvas& canvas, PrintRect const& page, std::string const& title,
    std::string const& name, std::string const& remark)
{
    constexpr double height = 16.0;
    constexpr double titleWidth = 44.0;
    constexpr double gap = 8.0;
    double const remarkWidth = 0.4 * page.width;
    canvas.drawText(
        {page.x, page.y, titleWidth, height}, {16.0, TextAlignment::Left, Ink::Text, true}, title);
    canvas.drawText(
        {page.x + titleWidth, page.y, page.width - titleWidth - gap - remarkWidth, height},
        {13.0, TextAlignment::Left, Ink::Text, true}, name);
    canvas.drawText({page.x + page.width - remarkWidth, page.y, remarkWidth, height},
        {9.0, TextAlignment::Right, Ink::Caption}, remark);
}

} // namespace tensio
