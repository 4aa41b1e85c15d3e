#pragma once

#include "output/Reports.h"
#include "reactive/Interface.h"

namespace tensio {

// Brings a report to paper, after the user has seen and agreed to it.
class ReportPrinter : public Interface {
public:
    // Returns at once; only where hasReport().
    virtual void print(ReportKind kind) = 0;
};

} // namespace tensio
