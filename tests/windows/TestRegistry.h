// The QtTest classes of windows_tests register themselves here, so that one
// program runs them all.
#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

using TestFactory = std::function<std::unique_ptr<QObject>()>;

std::vector<TestFactory>& RegisteredTests();

struct TestRegistration {
    explicit TestRegistration(TestFactory f) { RegisteredTests().push_back(std::move(f)); }
};

#define AZTRUE_REGISTER_TEST(Class)                  \
    static const TestRegistration Class##Registered( \
        [] { return std::unique_ptr<QObject>(std::make_unique<Class>()); })
