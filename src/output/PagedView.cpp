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

double lineHeight(PrintCanvas const& canvas, double fontSize)
{
    return 2.0 * canvas.capHeight(fontSize);
}

} // namespace tensio
