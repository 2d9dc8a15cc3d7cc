// What `morvane speed` measures: rows by name, made ready only when they are asked for.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace morvane::tool {

using Operation = std::function<void()>;

struct SpeedRow {
    std::string name;
    std::size_t bytes;                   // of the message at each call; 0: operations are counted
    std::function<Operation()> prepare;  // keys and messages; what it returns is measured
};

using SpeedRows = std::vector<SpeedRow>;

void add_stream_speeds(SpeedRows& all);
void add_key_speeds(SpeedRows& all);

}  // namespace morvane::tool
