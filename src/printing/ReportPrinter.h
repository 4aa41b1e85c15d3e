#pragma once

#include "output/Reports.h"
#include "reactive/Interface.h"

namespace tensio {

// Prints a report after the user has seen and accepted it.
class ReportPrinter : public Interface {
public:
    // Returns at once; only where hasReport().
    virtual void print(ReportKind kind) = 0;
};

} // namespace tensio
