// A library that exports names of the installer library and counts who calls them.
#pragma once

// How often any of its copies of our functions was called.
__attribute__((visibility("default"))) int rivalCalls();
