#pragma once

#include "reactive/Interface.h"

#include <optional>
#include <string>
#include <string_view>

namespace tensio {

// Asks the user where to save; everything else waits until it is answered.
class SavePanel : public Interface {
public:
    // The file type is given without a dot. Returns the chosen path in UTF-8, ending in the type,
    // or nothing when the user cancels. The user has agreed to overwrite a file that is there.
    virtual std::optional<std::string> runModal(std::string const& fileType) = 0;
    // The panel says so when what is saved are simulated readings. Returns what was set before.
    virtual bool setSimulated(bool isSimulated) = 0;
};

// Writes the files that the user saves.
class FileWriter : public Interface {
public:
    // Replaces the file at the path (UTF-8) by these bytes. False when the path cannot be written
    // or not everything reached the disk; the file then has its old contents.
    virtual bool writeAtomically(std::string const& path, std::string_view bytes) = 0;
};

} // namespace tensio
