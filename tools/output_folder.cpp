#include "tools/output_folder.h"

#include <fstream>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

namespace tools {

namespace {

    const std::string unfinished = ".unfinished";

} // namespace

OutputFolder::OutputFolder(const std::string& path)
    : folder_(path)
{
    std::error_code error;
    std::filesystem::create_directories(folder_, error);
    if (error || !std::filesystem::is_directory(folder_) || access(folder_.c_str(), W_OK) != 0)
        throw std::runtime_error(path + ": cannot be written to");
    Write("writable", {}); // being root, access() says yes to everything
    std::filesystem::remove(folder_ / ("writable" + unfinished));
    names_.clear();
}

OutputFolder::~OutputFolder()
{
    std::error_code ignored;
    for (const std::string& name : names_)
        std::filesystem::remove(folder_ / (name + unfinished), ignored);
}

std::string OutputFolder::PathFor(const std::string& name)
{
    names_.push_back(name);
    return (folder_ / (name + unfinished)).string();
}

void OutputFolder::Write(const std::string& name, const std::vector<unsigned char>& content)
{
    const std::string path = PathFor(name);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file)
        throw std::runtime_error((folder_ / name).string() + ": cannot be written");
}

void OutputFolder::Finish()
{
    for (const std::string& name : names_)
        std::filesystem::rename(folder_ / (name + unfinished), folder_ / name);
    names_.clear();
}

} // namespace tools
