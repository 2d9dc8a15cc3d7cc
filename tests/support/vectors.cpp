#include "support/vectors.h"

#include <fstream>
#include <stdexcept>

namespace morvane::test {

std::vector<Vector> load_vectors(const std::string& file) {
    std::ifstream input(std::string(MORVANE_TEST_VECTORS "/") + file);
    std::vector<Vector> vectors;
    Vector current;
    std::string line;
    const auto finish = [&] {
        if (!current.empty()) vectors.push_back(current);
        current = {};
    };
    while (std::getline(input, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) {
            finish();
        } else if (line[0] != '#') {
            const std::size_t equals = line.find(" =");
            if (equals == std::string::npos) throw std::runtime_error(file + ": no value in: " + line);
            current.set(line.substr(0, equals), equals + 3 <= line.size() ? line.substr(equals + 3) : "");
        }
    }
    finish();
    if (vectors.empty()) throw std::runtime_error("no vectors in " + file);
    return vectors;
}

}  // namespace morvane::test
