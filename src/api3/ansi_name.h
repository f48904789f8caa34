// The second name of a function: with A, which means the same as without.
#pragma once

// After the definition of a function that jxodbc3/odbcinst.h declares: the same function under its name with A.
#define JX_ALSO_WITH_A(function) extern "C" decltype(function) function##A __attribute__((alias(#function)))
