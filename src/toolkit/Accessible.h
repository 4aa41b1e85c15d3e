#pragma once

#include <QAccessible>

#include <optional>
#include <string>

class QLabel;
class QMenu;
class QWidget;

namespace tensio {

// Interface for custom-drawn widgets to describe themselves to screen readers. Name and description
// are the widget's accessible ones.
class Accessible {
public:
    struct Value {
        double current = 0.0;
        double minimum = 0.0;
        double maximum = 0.0;
    };

    virtual QAccessible::Role accessibleRole() const = 0;
    virtual std::optional<Value> accessibleValue() const { return std::nullopt; }
    // Adds to the state what only the widget knows.
    virtual void describeState(QAccessible::State& /*state*/) const { }
    // A name of QAccessibleActionInterface; empty without an action.
    virtual QString accessibleAction() const { return {}; }
    virtual void performAccessibleAction() { }
    // The menu that the widget opens, if any.
    virtual QMenu* accessibleMenu() const { return nullptr; }

protected:
    ~Accessible() = default;
};

// Makes such widgets known to screen readers. Called before the first window is made.
void installAccessibility();

// Notify screen readers of a change.
void announceState(QWidget& widget, QAccessible::State changed);
void announceValue(QWidget& widget, double value);
// For a message that may wait until the screen reader has finished speaking.
void announcePolitely(QWidget& widget, QString const& message);

// Sets the accessible name from the property "accessibleNameTemplate", e.g. "最大圧 %1 kPa";
// without one the shown text is the name.
void setNameFromTemplate(QWidget& widget, QString const& shown);
// Also shows the text on the label.
void setLabelText(QLabel& label, QString const& text);
void setLabelText(QLabel& label, std::string const& text); // UTF-8.

// Sets the role of a Qt widget that has none; its children are hidden from screen readers.
// Called before the other functions.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

// As the widget's own setter, but without a notification when nothing changes.
void setAccessibleDescriptionIfChanged(QWidget& widget, QString const& description);

} // namespace tensio
