#pragma once

#include "platform/Saving.h"

#include <utility>

namespace tensio {

class MainQueue;

// The system's save panel. Starts in the user's Desktop folder, if there is one.
class QtSavePanel : public SavePanel {
public:
    // The queue is held while the panel is up.
    explicit QtSavePanel(MainQueue& queue)
        : m_queue(queue)
    {
    }

    std::optional<std::string> runModal(std::string const& fileType) override;
    bool setSimulated(bool isSimulated) override
    {
        return std::exchange(m_isSimulated, isSimulated);
    }

private:
    MainQueue& m_queue;
    bool m_isSimulated = false;
};

class QtFileWriter : public FileWriter {
public:
    bool writeAtomically(std::string const& path, std::string_view bytes) override;
};

} // namespace tensio
