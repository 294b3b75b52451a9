#include "bench/program/Table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <unistd.h>

namespace bench {
namespace {

std::string Model() {
    std::ifstream lines("/proc/cpuinfo");
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("model name"))
            return line.substr(line.find(": ") + 2);
    }
    return "an unknown processor";
}

std::string Today() {
    const std::time_t now = std::time(nullptr);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", std::gmtime(&now));
    return text;
}

std::string Line(const Table::Row& row, const std::array<std::size_t, 4>& widths) {
    const std::array<const std::string*, 4> cells = {&row.What, &row.Measured, &row.Bar, &row.Met};
    std::string line = "|";
    for (std::size_t i = 0; i < cells.size(); ++i)
        line += " " + *cells[i] + std::string(widths[i] - cells[i]->size(), ' ') + " |";
    return line + "\n";
}

} // namespace

Bar AtLeast(double limit, const std::string& words) { return {Bar::Side::AtLeast, limit, words}; }
Bar AtMost(double limit, const std::string& words) { return {Bar::Side::AtMost, limit, words}; }

std::string Amount(double value, const std::string& unit) {
    const int whole = static_cast<int>(std::log10(std::max(std::abs(value), 1.0))) + 1;
    char text[48];
    std::snprintf(text, sizeof text, "%.*f %s", std::max(0, 3 - whole), value, unit.c_str());
    return text;
}

void Table::Add(const std::string& what, double value, const std::string& unit,
                const std::optional<Bar>& bar) {
    if (bar)
        Add(what, Amount(value, unit), value, *bar);
    else
        Add(what, Amount(value, unit));
}

void Table::Add(const std::string& what, const std::string& measured, double held, const Bar& bar) {
    const bool met = bar.Way == Bar::Side::AtLeast ? held >= bar.Limit : held <= bar.Limit;
    Rows.push_back({what, measured, bar.Words, met ? "met" : "NOT MET"});
}

void Table::Add(const std::string& what, const std::string& measured) {
    Rows.push_back({what, measured, "", ""});
}

std::string Format(const Table& table) {
    const Table::Row head = {"what", "measured", "bar", ""};
    std::array<std::size_t, 4> widths = {};
    std::vector<Table::Row> rows = table.Rows;
    rows.insert(rows.begin(), head);
    for (const Table::Row& row : rows) {
        widths[0] = std::max(widths[0], row.What.size());
        widths[1] = std::max(widths[1], row.Measured.size());
        widths[2] = std::max(widths[2], row.Bar.size());
        widths[3] = std::max(widths[3], row.Met.size());
    }
    std::string text = Line(head, widths) + "|";
    for (const std::size_t width : widths)
        text += std::string(width + 2, '-') + "|";
    text += "\n";
    for (const Table::Row& row : table.Rows)
        text += Line(row, widths);
    return text;
}

std::string Heading(const std::string& commit) {
    std::array<double, 1> load{};
    ::getloadavg(load.data(), 1);
    return "## " + Today() + ", " + commit + "\n\n" + Model() + ", " +
           std::to_string(::sysconf(_SC_NPROCESSORS_ONLN)) + " cores, compiler " + __VERSION__ +
           ", load at the start " + Amount(load[0], "") + "\n\n";
}

} // namespace bench
