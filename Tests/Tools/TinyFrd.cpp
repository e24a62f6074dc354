#include "Tests/Tools/TinyFrd.h"

#include <cstdarg>
#include <cstdio>

namespace orvtest {

namespace {

__attribute__((format(printf, 1, 2))) std::string line(const char* format, ...) {
    char buffer[200];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    return std::string(buffer) + '\n';
}

std::string blockHeader(int block, int state, double time, int rows) {
    return line("    1PSTEP%26d%12d%12d", block, state, 1) +
           line("  100CL%5d%12.5E%12d%20s%2d%5d%10s%2d", 100 + state, time, rows, "", 0, state, "", 1);
}

std::string scalarHeader(const char* name, const char* component) {
    return line(" -4  %-8s%5d%5d", name, 1, 1) + line(" -5  %-8s%5d%5d%5d%5d", component, 1, 1, 0, 0);
}

std::string mesh() {
    return line("    1C") + line("    1UMAT%5d%-58s", 1, "STEEL, hard") + line("    2C%30d%37s%d", 4, "", 1) +
           line(" -1%10d%12.5E%12.5E%12.5E", 11, 0.0, 0.0, 0.0) + line(" -1%10d%12.5E%12.5E%12.5E", 12, 1.0, 0.0, 0.0) +
           line(" -1%10d%12.5E%12.5E%12.5E", 13, 0.0, 1.0, 0.0) + line(" -1%10d%12.5E%12.5E%12.5E", 14, 0.0, 0.0, 1.0) +
           line(" -3") + line("    3C%30d%37s%d", 1, "", 1) + line(" -1%10d%5d%5d%5d", 50, 3, 0, 1) +
           line(" -2%10d%10d%10d%10d", 11, 12, 13, 14) + line(" -3");
}

std::string displacements() {
    return blockHeader(1, 1, 0.5, 3) + line(" -4  %-8s%5d%5d", "DISP", 4, 1) +
           line(" -5  D1          1    2    1    0") + line(" -5  D2          1    2    2    0") +
           line(" -5  D3          1    2    3    0") + line(" -5  ALL         1    2    0    0    1ALL") +
           line(" -1%10d%12.5E%12.5E%12.5E", 11, -1.0, 0.0, 0.0) +
           line(" -1%10d%12.5E%12.5E%12.5E", 12, 2.5, 0.0, 0.0) + line(" -1%10d%12.5E%12.5E%12.5E", 14, 1.5, 0.0, 0.0) +
           line(" -3");
}

std::string temperatures() {
    std::string text = blockHeader(2, 2, 1.0, 4) + scalarHeader("NDTEMP", "T");
    for (int node = 11; node <= 14; ++node) {
        text += line(" -1%10d%12.5E", node, 20.0);
    }
    return text + line(" -3");
}

std::string errorsWithoutRows() {
    return blockHeader(3, 2, 1.0, 0) + scalarHeader("ERROR", "STR(%)") + line(" -3");
}

} // namespace

std::string tinyFrd() {
    return mesh() + displacements() + temperatures() + errorsWithoutRows() + line(" 9999");
}

} // namespace orvtest
