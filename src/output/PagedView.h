#pragma once

#include "platform/PrintView.h"

#include <span>

namespace tensio {

// Base of all reports: keeps the current page, its printable area inside the margins, and whether
// its readings are simulated.
class PagedView : public PrintView {
public:
    // Printable area of the paper, in points; empty until pagination.
    PrintRect const& pageRect() const { return m_pageRect; }
    // Counted from 0.
    int currentPage() const { return m_currentPage; }

    void setSimulated(bool isSimulated) { m_isSimulated = isSimulated; }

    bool isSimulated() const final { return m_isSimulated; }
    int paginate(PrintInfo const& info, PrintCanvas const& canvas) final;
    PrintRect rectForPage(int page) final;

protected:
    // Returns the number of pages for pageRect(); 0 when nothing fits.
    virtual int layOut(PrintCanvas const& canvas) = 0;

    static constexpr double headingHeight = 38.0;
    // The kind of report and whose it is, and a remark on the right.
    void drawHeading(PrintCanvas& canvas, std::string const& title, std::string const& name,
        std::string const& remark) const;

private:
    PrintRect m_pageRect;
    int m_currentPage = 0;
    bool m_isSimulated = false;
};

// Distance between lines: twice the height of a capital.
double lineHeight(PrintCanvas const& canvas, double fontSize);

// A line of a table. Each text stands between the end of the column before and the end of its own,
// in points from the left; the first columns are aligned left, the others right.
void drawCells(PrintCanvas& canvas, PrintRect const& line, std::span<double const> columnEnds,
    std::size_t leftColumns, TextStyle style, std::span<std::string const> texts);

} // namespace tensio
