#pragma once

#include "platform/PrintView.h"
#include "reactive/Interface.h"

#include <optional>
#include <string>

namespace tensio {

// Makes PDF files on the current paper.
class PdfRenderer : public Interface {
public:
    // True when the paper has room for at least one page. Paginates the view.
    virtual bool hasRoomFor(PrintView& view) const = 0;
    // The bytes of the file; nothing when it could not be made. Paginates the view.
    virtual std::optional<std::string> render(PrintView& view) const = 0;
};

} // namespace tensio
