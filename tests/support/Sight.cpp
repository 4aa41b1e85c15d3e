#include "support/Sight.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>

#include <algorithm>
#include <optional>

namespace tensio {

namespace {

QString nameOf(QObject const& object)
{
    auto const* type = object.metaObject()->className();
    return object.objectName().isEmpty() ? QString(type).remove("tensio::") : object.objectName();
}

// Qt's own are made of different parts from version to version.
bool hasPartsOfItsOwn(QWidget const& widget)
{
    auto const inherits = [&](auto*... types) { return (... || widget.inherits(types)); };
    return inherits("QFileDialog", "QAbstractScrollArea", "QComboBox", "QAbstractSpinBox",
        "QLineEdit", "QPrintPreviewWidget");
}

} // namespace

Sight::Sight()
{
    auto windows = QApplication::topLevelWidgets();
    std::ranges::sort(windows, {}, [](auto const* window) { return nameOf(*window); });
    for (auto* window : windows) {
        m_window = qobject_cast<QMainWindow*>(window) ? QString() : nameOf(*window) + u'/';
        addWidget(*window, {});
    }
    if (auto const* focus = QApplication::focusWidget()) {
        auto const found
            = std::ranges::find(widgets, focus, &decltype(widgets)::value_type::second);
        parts.push_back({"focus", found == widgets.end() ? nameOf(*focus) : found->first});
    }
}

QString Sight::changesSince(Sight const& before) const
{
    auto const find = [](auto const& all, QString const& place) {
        return std::ranges::find(all, place, &Part::place);
    };
    QString text;
    std::optional<QString> gone;
    for (auto const& [place, was] : before.parts) {
        // A window takes all of its parts along; the main window has an empty place.
        bool const isOfGone = gone
            && (gone->isEmpty() ? !place.contains(u'/')
                                : gone->endsWith(u'/') && place.startsWith(*gone));
        if (find(parts, place) == parts.end() && !isOfGone)
            text += "no " + *(gone = place) + u'\n';
    }
    for (auto const& [place, is] : parts) {
        auto const was = find(before.parts, place);
        if (was == before.parts.end() || was->text != is)
            text += place + ": " + is + u'\n';
    }
    return text;
}

void Sight::addWidget(QWidget& widget, QString const& place)
{
    if (!widget.isVisible())
        return;
    auto& spoken = *QAccessible::queryAccessibleInterface(&widget);
    auto const state = spoken.state();
    QStringList words;
    if (widget.isWindow())
        words << widget.windowTitle() << (widget.isFullScreen() ? "full screen" : "");
    if (auto const* label = qobject_cast<QLabel*>(&widget))
        words << label->text();
    if (auto const* button = qobject_cast<QAbstractButton*>(&widget))
        words << button->text();
    if (auto const* box = qobject_cast<QMessageBox*>(&widget))
        words << "icon " + QString::number(box->icon());
    if (auto const* panel = qobject_cast<QFileDialog*>(&widget))
        words << "mode " + QString::number(panel->fileMode()) << panel->nameFilters();
    for (auto const kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value})
        words << spoken.text(kind).left(200);
    auto const* value = spoken.valueInterface();
    if (value && value->currentValue().canConvert<double>())
        words << QString::number(value->currentValue().toDouble());
    auto const tip = widget.toolTip();
    words << (!tip.isEmpty() && words.contains(tip) ? "tip" : tip);
    if (auto const* text = qobject_cast<QTextBrowser*>(&widget)) {
        // Qt lays out a long text bit by bit; this is the whole.
        words << QString::number(text->fontInfo().pixelSize()) + " px";
        bool const isLong = text->document()->size().height() > text->viewport()->height();
        if (isLong && text->verticalScrollBar()->value() > 0)
            words << "from " + text->cursorForPosition({}).block().text();
    }
    bool const isSilent = words.join(QString()).isEmpty() && !widget.isWindow();
    if (isSilent && widget.focusPolicy() == Qt::NoFocus)
        return addChildren(widget, place);
    auto const* button = qobject_cast<QPushButton*>(&widget);
    words << (state.disabled ? "disabled" : "") << (state.checked ? "checked" : "")
          << (state.selected ? "selected" : "") << (state.expanded ? "expanded" : "")
          << (state.collapsed ? "collapsed" : "")
          << (button && button->isDefault() ? "default" : "")
          << (widget.property("refused").toBool() ? "refused" : "");
    widgets[m_window + place] = &widget;
    add(place, words);
    addChildren(widget, place);
}

void Sight::addChildren(QWidget const& widget, QString const& place)
{
    if (auto const* const view = qobject_cast<QAbstractItemView const*>(&widget)) {
        auto const& model = *view->model();
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells << model.index(row, column).data().toString();
            bool const isSelected = view->selectionModel()->isRowSelected(row, {});
            add(place + QString::number(row + 1), cells << (isSelected ? "selected" : ""));
        }
    }
    if (hasPartsOfItsOwn(widget))
        return;
    addActions(widget, place);
    std::map<QString, int> counts;
    for (auto* child : widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        auto const name = nameOf(*child);
        auto const count = ++counts[name];
        if (!child->isWindow())
            addWidget(*child, count > 1 ? name + QString::number(count) : name);
    }
}

void Sight::addActions(QWidget const& widget, QString const& place)
{
    bool isAfterLine = false;
    for (auto const* action : widget.actions()) {
        bool const isTold = action->isVisible() && !action->text().isEmpty();
        if (isTold && m_actions.insert(action).second)
            add("» " + action->text(),
                {isAfterLine ? "below a line" : "", action->shortcut().toString(),
                    action->isEnabled() ? "" : "disabled", action->isChecked() ? "checked" : ""});
        isAfterLine = action->isSeparator();
        if (action->menu())
            addActions(*action->menu(), place);
    }
}

void Sight::add(QString const& place, QStringList words)
{
    words.removeAll({});
    words.removeDuplicates();
    parts.push_back({m_window + place, words.join(" · ").replace(u'\n', u'⏎').remove(qVersion())});
}

} // namespace tensio
