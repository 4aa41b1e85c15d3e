#pragma once

#include "platform/PrintView.h"

namespace tensio {

// What all reports share: one page of the paper is current, and is drawn inside the margins.
class PagedView : public PrintView {
public:
    // Printable area of the paper; empty until pagination.
    PrintRect const& pageRect() const { return m_pageRect; }
    // Counted from 0.
    int currentPage() const { return m_currentPage; }

    int paginate(PrintInfo const& info, PrintCanvas const& canvas) final;
    PrintRect rectForPage(int page) final;

protected:
    // How many pages it takes on the printable area; 0 when nothing fits.
    virtual int layOut(PrintCanvas const& canvas) = 0;

private:
    PrintRect m_pageRect;
    int m_currentPage = 0;
};

// Lines stand twice the height of a capital apart.
double lineHeight(PrintCanvas const& canvas, double fontSize);

} // namespace tensio
