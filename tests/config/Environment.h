// An environment variable with a value of its own, or without one, for the time of a test.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

class Environment {
public:
    Environment(const char* variable, const char* value) : Variable(variable) {
        if (const char* const before = std::getenv(variable))
            Before = before;
        Set(value);
    }

    ~Environment() { Set(Before ? Before->c_str() : nullptr); }

    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    void Set(const char* value) const {
        if (value != nullptr)
            setenv(Variable, value, 1);
        else
            unsetenv(Variable);
    }

    const char* Variable;
    std::optional<std::string> Before;
};
