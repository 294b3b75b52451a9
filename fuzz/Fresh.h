// Every module and every port in its start state, and a folder for the files, as for a rule test.
#pragma once

#include "config/FreshFolder.h"
#include "fakes/Fakes.h"

#include <cstddef>
#include <cstdint>
#include <string>

struct Fresh : RuleTest {
    Fresh() {
        static const FreshFolder folder;
        mw::ApplicationFolder = folder.Path;
    }
    void TestBody() override {}
};

inline std::string Text(const std::uint8_t* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}
