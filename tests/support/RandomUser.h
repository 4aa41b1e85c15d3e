#pragma once

#include <QObject>
#include <QString>

#include <random>

class QWidget;

namespace tensio {

// Somebody who clicks, doubles, types, keys, scrolls and chooses from menus at random. The controls
// are whatever takes the focus or a click in the windows that can be reached at that moment.
class RandomUser : public QObject {
public:
    explicit RandomUser(std::mt19937& random);

    // Does one thing to one control, or chooses one command. What it was.
    QString act();

    // A menu has an event loop of its own, so it is answered from in there.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int upTo(int highest);
    QString chooseCommand();
    QWidget* anyControl();
    void click(QWidget& control);
    void doubleClick(QWidget& control);
    void type(QWidget& control);
    void pressKey(QWidget& control);
    void scroll(QWidget& control);
    void answerMenu();

    std::mt19937& m_random;
};

} // namespace tensio
