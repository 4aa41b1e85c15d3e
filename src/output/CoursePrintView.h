#pragma once

#include "core/Course.h"
#include "output/Chart.h"
#include "output/DateTicks.h"
#include "output/PagedView.h"

namespace tensio {

// How a person's best pressures change from session to session: a plot over the dates on the first
// page, and a table of all sessions.
class CoursePrintView : public PagedView {
public:
    explicit CoursePrintView(Course course);

    void draw(PrintCanvas& canvas) const override;

protected:
    int layOut(PrintCanvas const& canvas) override;

private:
    void drawPlot(PrintCanvas& canvas, PrintRect const& frame) const;
    void drawTable(PrintCanvas& canvas, double y, std::size_t first, std::size_t count) const;
    double secondsTo(Date date) const;
    std::vector<ChartPoint> pointsOf(float CourseEntry::*pressure) const;
    std::vector<ChartPoint> targetSteps() const;

    Course m_course;
    std::vector<DateTick> m_ticks;
    std::size_t m_rowsOnFirstPage = 0;
    std::size_t m_rowsPerPage = 0;
};

} // namespace tensio
