#pragma once

#include "Stage.h"

#include <QSize>

#include <vector>

namespace tensio {

class Application;
class TensioManager;

// Pictures of states that the unattended session does not reach, for a person to judge: other sizes
// of the window, the longest texts, every state of a control. The states are set directly, without
// a device.
class Gallery {
public:
    Gallery(Application& application, QString const& folder);

    // Throws DemoFailure when a state cannot be reached.
    void show();

private:
    void showMainWindow(QSize size);
    void showDialog(QString const& prefix);
    void showPreview();

    void forgetAll();
    void measure(std::vector<float> const& bestPressures, int firstNumber = 1);
    void press();
    void selectThree();
    void take(QString const& name) const;

    Application& m_application;
    TensioManager& m_manager;
    Stage m_stage;
    QString m_prefix;
};

} // namespace tensio
