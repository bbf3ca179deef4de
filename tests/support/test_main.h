#pragma once

#include <QObject>
#include <QTest>

#include <functional>
#include <memory>

namespace velmora::test {

/// Adds a test class to the program; use it through VELMORA_TEST.
bool registerTest(std::function<std::unique_ptr<QObject>()> make);

} // namespace velmora::test

/// Registers the test class with the main function that every test program shares. In the class's .cpp, once.
#define VELMORA_TEST(Class)                                                                                            \
    static const bool registered##Class =                                                                              \
        velmora::test::registerTest([]() -> std::unique_ptr<QObject> { return std::make_unique<Class>(); });
