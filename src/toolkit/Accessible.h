#pragma once

#include <QAccessible>

#include <optional>

class QLabel;
class QMenu;
class QWidget;

namespace tensio {

// What a widget that draws itself is to a screen reader; such a widget derives from this beside its
// toolkit class. Its name and description are the widget's accessible ones.
class Accessible {
public:
    struct Value {
        double current = 0.0;
        double minimum = 0.0;
        double maximum = 0.0;
    };

    virtual QAccessible::Role accessibleRole() const = 0;
    // None for most.
    virtual std::optional<Value> accessibleValue() const { return std::nullopt; }
    // Adds to the state what only the widget knows.
    virtual void describeState(QAccessible::State& /*state*/) const { }
    // By the names of QAccessibleActionInterface; empty when there is nothing to be done with it.
    virtual QString accessibleAction() const { return {}; }
    virtual void performAccessibleAction() { }
    // The menu that it opens, if any.
    virtual QMenu* accessibleMenu() const { return nullptr; }

protected:
    Accessible() = default;
    Accessible(Accessible const&) = default;
    Accessible& operator=(Accessible const&) = default;
    ~Accessible() = default;
};

// Makes such widgets known to screen readers. Before the first window.
void installAccessibility();

// Tell a screen reader of a change.
void announceState(QWidget& widget, QAccessible::State changed);
void announceValue(QWidget& widget, double value);

// Names the widget by what it stands for and what it shows: its property "spokenAs" ("最大圧 %1
// kPa") has the place.
void speak(QWidget& widget, QString const& shown);
// The same, for a label that shows the text.
void setReadOut(QLabel& label, QString const& text);

// What a foreign widget is to a screen reader, where the toolkit does not say; what it is made of
// inside is not told. Before anything else is set.
void setSpokenRole(QWidget& widget, QAccessible::Role role);

// As the widget's own setters, but silent where nothing changes.
void setSpokenName(QWidget& widget, QString const& name);
void setSpokenDescription(QWidget& widget, QString const& description);

} // namespace tensio
