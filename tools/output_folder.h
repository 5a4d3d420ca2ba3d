#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tools {

// Files that appear in a folder all at once, when everything has been written, or not at all.
class OutputFolder {
public:
    // Makes the folder. Throws std::runtime_error when it cannot be written to.
    explicit OutputFolder(const std::string& path);
    ~OutputFolder(); // removes what was not finished
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

    // Where to write the file of this name for now.
    std::string PathFor(const std::string& name);
    void Write(const std::string& name, const std::vector<unsigned char>& content);
    void Finish();

private:
    std::filesystem::path folder_;
    std::vector<std::string> names_;
};

} // namespace tools
