#pragma once

#include <QObject>

#include <functional>
#include <memory>

/**
 * Runs one test object in a QApplication whose user folders are temporary, and fails the run on any Qt
 * warning that no test announced with QTest::ignoreMessage() (those never reach the handler).
 * @return the number of failures, for main()
 */
int runTests(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &makeTest);

/// Warnings whose text contains this are let through for the rest of the program: only for those that a
/// contract prescribes, such as the slots named after widgets that do not exist.
void allowWarning(const QString &part);

/// The record forms have slots named after widgets that they do not have; Qt says so for each.
void allowWarningsOfNamedSlots();

/// The shared corpus of real DICOM files beside the project, or an empty text where it is not there.
QString sharedData();

#define PM_TEST_MAIN(TestClass)                                                                              \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return runTests(argc, argv, [] { return std::make_unique<TestClass>(); });                           \
    }
