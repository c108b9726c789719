// SPDX-License-Identifier: Apache-2.0
#pragma once

// The walk over a file and those that it includes, in their place, each once and within the bounds
// of the readers.

#include <set>
#include <string>

#include "mapping/check/checked_element.h"
#include "mapping/check/element_rules.h"
#include "mapping/check/findings.h"
#include "xml/xml_file.h"

namespace fixtop {

class FileWalk {
 public:
    FileWalk(const ElementRule& root, bool has_resources, std::size_t most_files,
             Findings& findings)
        : findings_(findings),
          root_(root),
          has_resources_(has_resources),
          most_files_(most_files) {}
    virtual ~FileWalk() = default;
    FileWalk(const FileWalk&) = delete;
    FileWalk& operator=(const FileWalk&) = delete;

    void Read(const std::string& file);

 protected:
    // An element directly below the root that readers take, whose inside was checked for what
    // nobody reads.
    virtual void OnElement(const CheckedElement& element) = 0;
    // To be called by OnElement.
    void Include(const std::string& file, FindingPlace from);
    // The root of the first file; line 0 when it has none.
    FindingPlace Start() const { return start_; }

    Findings& findings_;

 private:
    void ReadOne(const std::string& file, ModelFileOrigin origin, const FindingPlace* from);
    bool TakesRoot(const CheckedElement& root);

    const ElementRule& root_;
    const bool has_resources_;
    const std::size_t most_files_;
    std::set<std::string> read_;
    int depth_ = 0;
    FindingPlace start_;
    bool has_start_ = false;
};

}  // namespace fixtop
