#include "tools/progress.h"

#include <cstdio>
#include <unistd.h>

namespace tools {

Progress::Progress(std::size_t total)
    : total_(total)
    , visible_(total > 1 && isatty(STDERR_FILENO))
{
}

Progress::~Progress()
{
    if (visible_)
        std::fputs("\r\033[K", stderr);
}

void Progress::Show(const std::string& what)
{
    if (!visible_)
        return;
    constexpr std::size_t width = 30;
    const std::size_t filled = started_ * width / total_;
    ++started_;
    const std::string bar = std::string(filled, '#') + std::string(width - filled, '.');
    std::fprintf(stderr, "\r\033[K[%s] %zu/%zu %s", bar.c_str(), started_, total_,
                 what.substr(what.rfind('/') + 1).c_str());
    std::fflush(stderr);
}

} // namespace tools
