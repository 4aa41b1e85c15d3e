#include "toolkit/Accessible.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QMenu>

namespace tensio {

namespace {

constexpr auto roleProperty = "accessibleRole";

class DescribedWidget
    : public QAccessibleWidget
    , public QAccessibleValueInterface {
public:
    DescribedWidget(QWidget& described, QAccessible::Role role)
        : QAccessibleWidget(&described, role)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return value() ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
        return QAccessibleWidget::interface_cast(type);
    }

    QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        if (auto const* open = menu()) {
            state.hasPopup = true;
            state.expandable = true;
            state.expanded = open->isVisible();
            state.collapsed = !open->isVisible();
        }
        if (auto const* described = description())
            described->describeState(state);
        return state;
    }

    int childCount() const override
    {
        if (menu())
            return 1;
        return description() ? QAccessibleWidget::childCount() : 0;
    }
    QAccessibleInterface* child(int index) const override
    {
        if (auto* open = menu())
            return index == 0 ? QAccessible::queryAccessibleInterface(open) : nullptr;
        return QAccessibleWidget::child(index);
    }
    int indexOfChild(QAccessibleInterface const* child) const override
    {
        if (auto const* open = menu())
            return child && child->object() == open ? 0 : -1;
        return QAccessibleWidget::indexOfChild(child);
    }

    QStringList actionNames() const override
    {
        auto names = QAccessibleWidget::actionNames();
        auto const* described = description();
        auto const own = described ? described->accessibleAction() : QString();
        if (!own.isEmpty() && widget()->isEnabled())
            names.prepend(own);
        return names;
    }

    void doAction(QString const& name) override
    {
        auto* described = description();
        if (!described || name != described->accessibleAction()) {
            QAccessibleWidget::doAction(name);
            return;
        }
        // Queued: a menu that it opens may stay open, and the screen reader must not wait.
        QMetaObject::invokeMethod(
            widget(), [described] { described->performAccessibleAction(); }, Qt::QueuedConnection);
    }

    QVariant currentValue() const override { return value()->current; }
    QVariant minimumValue() const override { return value()->minimum; }
    QVariant maximumValue() const override { return value()->maximum; }
    QVariant minimumStepSize() const override { return {}; }
    void setCurrentValue(QVariant const& /*value*/) override { }

private:
    // Not cached: during destruction the widget is already a plain QWidget but still queried.
    Accessible* description() const { return dynamic_cast<Accessible*>(object()); }

    std::optional<Accessible::Value> value() const
    {
        auto const* described = description();
        return described ? described->accessibleValue() : std::nullopt;
    }

    QMenu* menu() const
    {
        auto const* described = description();
        return described ? described->accessibleMenu() : nullptr;
    }
};

QAccessibleInterface* makeInterface(QString const& /*className*/, QObject* object)
{
    auto* widget = qobject_cast<QWidget*>(object);
    if (auto const* description = dynamic_cast<Accessible*>(object); widget && description)
        return new DescribedWidget(*widget, description->accessibleRole());
    if (auto const role = object->property(roleProperty); widget && role.isValid())
        return new DescribedWidget(*widget, static_cast<QAccessible::Role>(role.toInt()));
    return nullptr;
}

} // namespace

void installAccessibility()
{
    QAccessible::installFactory(makeInterface);
}

void announceState(QWidget& widget, QAccessible::State changed)
{
    QAccessibleStateChangeEvent event(&widget, changed);
    QAccessible::updateAccessibility(&event);
}

void announceValue(QWidget& widget, double value)
{
    QAccessibleValueChangeEvent event(&widget, value);
    QAccessible::updateAccessibility(&event);
}

void announcePolitely(QWidget& widget, [[maybe_unused]] QString const& message)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&widget, message);
    event.setPoliteness(QAccessible::AnnouncementPoliteness::Polite);
#else
    QAccessibleEvent event(&widget, QAccessible::NameChanged);
#endif
    QAccessible::updateAccessibility(&event);
}

void setNameFromTemplate(QWidget& widget, QString const& shown)
{
    auto const spoken = widget.property("accessibleNameTemplate").toString();
    auto const name = spoken.isEmpty() ? shown : spoken.arg(shown).trimmed();
    if (widget.accessibleName() != name)
        widget.setAccessibleName(name);
}

void setLabelText(QLabel& label, QString const& text)
{
    label.setText(text);
    setNameFromTemplate(label, text);
}

void setLabelText(QLabel& label, std::string const& text)
{
    setLabelText(label, QString::fromStdString(text));
}

void setAccessibleRole(QWidget& widget, QAccessible::Role role)
{
    widget.setProperty(roleProperty, static_cast<int>(role));
}

void setAccessibleDescriptionIfChanged(QWidget& widget, QString const& description)
{
    if (widget.accessibleDescription() != description)
        widget.setAccessibleDescription(description);
}

} // namespace tensio
