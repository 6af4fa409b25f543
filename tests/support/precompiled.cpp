// Source of the target that precompiles the header for all tests.
#include <gtest/gtest.h>
