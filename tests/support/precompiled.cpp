// The target of the header that is precompiled for all tests.
#include <gtest/gtest.h>
