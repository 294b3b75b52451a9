// Runs the journeys, and writes the tour when one is asked for. Sockets and processes need an
// application object.
#include "Tour.h"

#include <exception>
#include <gtest/gtest.h>
#include <iostream>

#include <QCoreApplication>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    try {
        journey::WriteTour();
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return result;
}
