#pragma once

#include "platform/Printing.h"

#include <QPageLayout>

namespace tensio {

// Reports as PDF files: vectors, the typeface embedded, text that can be searched and copied.
class PdfReport : public PdfRenderer {
public:
    // The paper in force may change between calls; it must outlive the renderer.
    explicit PdfReport(QPageLayout const& layout)
        : m_layout(layout)
    {
    }
    explicit PdfReport(QPageLayout&&) = delete;

    bool hasRoomFor(PrintView& view) const override;
    std::optional<std::string> render(PrintView& view) const override;

private:
    QPageLayout const& m_layout;
};

} // namespace tensio
