#pragma once

#include <QValidator>

namespace tensio {

// Keeps a name to one cell of a table, also one pasted from a spreadsheet: tabs and line breaks
// around it are dropped, those within it become a space.
class NameValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& name, int& cursor) const override;
};

} // namespace tensio
