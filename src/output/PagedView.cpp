#include "output/PagedView.h"

namespace tensio {

int PagedView::paginate(PrintInfo const& info, PrintCanvas const& canvas)
{
    m_pageRect
        = {info.leftMargin, info.topMargin, info.paperWidth - info.leftMargin - info.rightMargin,
            info.paperHeight - info.topMargin - info.bottomMargin};
    return layOut(canvas);
}

PrintRect PagedView::rectForPage(int page)
{
    m_currentPage = page - 1;
    return m_pageRect;
}

void PagedView::drawHeading(PrintCanvas& canvas, std::string const& title, std::string const& name,
    std::string const& remark) const
{
    auto const write = [&](double start, double end, TextStyle style, std::string const& text) {
        canvas.drawText({m_pageRect.x + start, m_pageRect.y, end - start, 16.0}, style, text);
    };
    double const remarkStart = 0.6 * m_pageRect.width;
    write(0.0, 40.0, {16.0, TextAlignment::Left, Ink::Text, true}, title);
    write(44.0, remarkStart - 8.0, {13.0, TextAlignment::Left, Ink::Text, true}, name);
    write(remarkStart, m_pageRect.width, {9.0, TextAlignment::Right, Ink::Caption}, remark);
}

double lineHeight(PrintCanvas const& canvas, double fontSize)
{
    return 2.0 * canvas.capHeight(fontSize);
}

void drawCells(PrintCanvas& canvas, PrintRect const& line, std::span<double const> columnEnds,
    std::size_t leftColumns, TextStyle style, std::span<std::string const> texts)
{
    double start = 0.0;
    for (std::size_t column = 0; column < texts.size(); ++column) {
        auto const end = columnEnds[column];
        style.alignment = column < leftColumns ? TextAlignment::Left : TextAlignment::Right;
        canvas.drawText({line.x + start, line.y, end - start, line.height}, style, texts[column]);
        start = end;
    }
}

} // namespace tensio
