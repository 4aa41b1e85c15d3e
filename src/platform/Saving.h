#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tensio {

// Asks the user where to save; holds up everything else until it is answered.
class SavePanel {
public:
    SavePanel() = default;
    SavePanel(SavePanel const&) = delete;
    SavePanel& operator=(SavePanel const&) = delete;
    virtual ~SavePanel() = default;

    // The chosen path, with the file type as its extension; nothing when the user cancels.
    virtual std::optional<std::string> runModal(std::string const& fileType) = 0;
};

class FileWriter {
public:
    FileWriter() = default;
    FileWriter(FileWriter const&) = delete;
    FileWriter& operator=(FileWriter const&) = delete;
    virtual ~FileWriter() = default;

    // The file then holds these bytes, or what it held before; true only when they are there.
    virtual bool writeAtomically(std::string const& path, std::string_view bytes) = 0;
};

} // namespace tensio
