// Test vectors from plain text files: "name = value" lines, records divided by blank lines, # for comments.
#pragma once

#include "support/bytes.h"

#include <map>

namespace morvane::test {

class Vector {
public:
    void set(const std::string& name, const std::string& value) { fields_[name] = value; }
    bool empty() const { return fields_.empty(); }
    const std::map<std::string, std::string>& fields() const { return fields_; }
    bool has(const std::string& name) const { return fields_.count(name) != 0; }
    // Both throw when the field is missing.
    const std::string& text(const std::string& name) const { return fields_.at(name); }
    Bytes bytes(const std::string& name) const { return from_hex(text(name)); }

private:
    std::map<std::string, std::string> fields_;
};

// The records of tests/vectors/<file>. Throws when there are none.
std::vector<Vector> load_vectors(const std::string& file);

}  // namespace morvane::test
