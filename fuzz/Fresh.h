// Every module and every port in its start state, and a folder for the files, as for a rule test.
#pragma once

#include "config/FreshFolder.h"
#include "fakes/Fakes.h"
#include "fuzz/Input.h"

struct Fresh : RuleTest {
    Fresh() {
        static const FreshFolder folder;
        mw::ApplicationFolder = folder.Path;
    }
    void TestBody() override {}
};
