#include "printing/QtPdfRenderer.h"

#include "printing/PageDrawing.h"

#include <QBuffer>
#include <QPdfWriter>

using namespace Qt::StringLiterals;

namespace tensio {

bool QtPdfRenderer::hasRoomFor(PrintView& view) const
{
    return hasPages(view, m_layout);
}

std::optional<std::string> QtPdfRenderer::render(PrintView& view) const
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setTitle(reportTitle(view.isSimulated()));
        writer.setCreator(u"tensio"_s);
        writer.setPageLayout(m_layout);
        if (!drawPages(view, writer))
            return std::nullopt;
    }
    return buffer.data().toStdString();
}

} // namespace tensio
