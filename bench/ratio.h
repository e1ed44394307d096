#pragma once

#include <string>

// Says that one benchmark is to be compared with another of the same run. After the run a table shows ours,
// the peer's, and the ratio beside the aim. `aim` is the largest ratio of our time to the peer's that is
// good.
struct Comparison {
    Comparison(const char* what, std::string ours, std::string peer, double aim);
};
