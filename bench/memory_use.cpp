#include "memory_use.h"

#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace bench {
namespace {

// smaps has for each mapping a line "from-to access offset device inode path" and lines of
// "Name: number kB".
double bytes_in(const char *line) {
    unsigned long from = 0;
    unsigned long to = 0;
    unsigned long inode = 0;
    if (std::sscanf(line, "%lx-%lx %*s %*s %*s %lu", &from, &to, &inode) == 3)
        return inode ? static_cast<double>(to - from) : 0;
    unsigned long kilobytes = 0;
    if (std::sscanf(line, "Anonymous: %lu kB", &kilobytes) == 1)
        return static_cast<double>(kilobytes) * 1024;
    return 0;
}

} // namespace

double memory_use() {
    std::FILE *file = std::fopen("/proc/self/smaps", "r");
    if (!file) throw std::runtime_error("no /proc/self/smaps");
    char line[4200];
    double sum = 0;
    while (std::fgets(line, sizeof line, file)) sum += bytes_in(line);
    std::fclose(file);
    return sum;
}

} // namespace bench
