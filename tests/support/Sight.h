#pragma once

#include <QString>

#include <map>
#include <set>
#include <vector>

class QAction;
class QWidget;

namespace tensio {

// All that a user sees of the windows that are shown, or hears of them from a screen reader.
class Sight {
public:
    struct Part {
        // The window, unless it is the main one, and the part's name there.
        QString place;
        QString text;
    };
    std::vector<Part> parts;
    std::map<QString, QWidget*> widgets;

    Sight();

    // A line for each part that differs or has gone.
    QString changesSince(Sight const& before) const;

private:
    void addWidget(QWidget& widget, QString const& place);
    void addActions(QWidget const& widget, QString const& place);
    void addChildren(QWidget const& widget, QString const& place);
    void add(QString const& place, QStringList words);

    QString m_window;
    std::set<QAction const*> m_actions;
};

} // namespace tensio
