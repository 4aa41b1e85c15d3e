#pragma once

#include "platform/PrintView.h"

namespace tensio {

// Base of all reports: keeps the current page and its printable area inside the margins.
class PagedView : public PrintView {
public:
    // Printable area of the paper, in points; empty until pagination.
    PrintRect const& pageRect() const { return m_pageRect; }
    // Counted from 0.
    int currentPage() const { return m_currentPage; }

    int paginate(PrintInfo const& info, PrintCanvas const& canvas) final;
    PrintRect rectForPage(int page) final;

protected:
    // Returns the number of pages for pageRect(); 0 when nothing fits.
    virtual int layOut(PrintCanvas const& canvas) = 0;

private:
    PrintRect m_pageRect;
    int m_currentPage = 0;
};

// Distance between lines: twice the height of a capital.
double lineHeight(PrintCanvas const& canvas, double fontSize);

} // namespace tensio
