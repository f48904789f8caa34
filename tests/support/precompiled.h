// What nearly every test includes, for builds that compile it once (JX_PRECOMPILE).
#ifndef JX_TESTS_PRECOMPILED_H
#define JX_TESTS_PRECOMPILED_H

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "../../scripts/banned.h"

#endif
