#pragma once

#include <cstddef>
#include <string>

namespace tools {

// A bar on the terminal while more than one drawing is played; nothing where stderr is no terminal.
class Progress {
public:
    explicit Progress(std::size_t total);
    ~Progress(); // clears the line
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    void Show(const std::string& what); // the next one begins

private:
    std::size_t total_;
    std::size_t started_ = 0;
    bool visible_;
};

} // namespace tools
