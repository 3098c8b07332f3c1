#pragma once

#include <string>

/// Prints an error message and ends the program with EXIT_FAILURE.
[[noreturn]] void fail(const std::string& message);

/// Fails unless the condition holds; `expectation` describes it in the present tense.
void expect(bool condition, const std::string& expectation);
