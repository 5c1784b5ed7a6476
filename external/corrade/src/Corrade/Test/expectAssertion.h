#ifndef Corrade_Test_expectAssertion_h
#define Corrade_Test_expectAssertion_h

#include <csignal>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/* Expects the statement to print exactly this line on the standard error
   output and to abort */
#define EXPECT_ASSERTION(statement, text)                                                          \
    EXPECT_EXIT(statement, testing::KilledBySignal(SIGABRT), testing::Eq(std::string(text) + "\n"))

/* The same where more may be printed before */
#define EXPECT_ASSERTION_AT_LAST(statement, text)                                                  \
    EXPECT_EXIT(                                                                                   \
        statement, testing::KilledBySignal(SIGABRT), testing::EndsWith(std::string(text) + "\n"))

#endif
