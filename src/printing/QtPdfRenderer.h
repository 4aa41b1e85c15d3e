#pragma once

#include "platform/PdfRenderer.h"

#include <QPageLayout>

namespace tensio {

// Reports as PDF files: vectors, the typeface embedded, text that can be searched and copied.
class QtPdfRenderer : public PdfRenderer {
public:
    // The layout may change between calls.
    explicit QtPdfRenderer(QPageLayout const& layout)
        : m_layout(layout)
    {
    }
    explicit QtPdfRenderer(QPageLayout&&) = delete;

    bool hasRoomFor(PrintView& view) const override;
    std::optional<std::string> render(PrintView& view) const override;

private:
    QPageLayout const& m_layout;
};

} // namespace tensio
