// The table of what was measured: printed, and kept with the machine it was measured on.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Bar {
    enum class Side { AtLeast, AtMost };

    Side Way;
    double Limit;
    std::string Words; // "at least 1/30 of the reader"
};

Bar AtLeast(double limit, const std::string& words);
Bar AtMost(double limit, const std::string& words);

struct Table {
    // What is measured without a bar has none to meet.
    void Add(const std::string& what, double value, const std::string& unit,
             const std::optional<Bar>& bar = std::nullopt);

    // Held to the bar by something else than the value shown, usually a ratio.
    void Add(const std::string& what, const std::string& measured, double held, const Bar& bar);
    void Add(const std::string& what, const std::string& measured);

    struct Row {
        std::string What;
        std::string Measured;
        std::string Bar;
        std::string Met;
    };
    std::vector<Row> Rows;
};

// A number with its unit, in three digits.
std::string Amount(double value, const std::string& unit);

std::string Format(const Table& table); // as Markdown

// "## DATE, COMMIT" and a line about processor, cores, compiler and load.
std::string Heading(const std::string& commit);

} // namespace bench
