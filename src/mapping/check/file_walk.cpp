// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/file_walk.h"

#include "mapping/check/element_check.h"
#include "mapping/check/read_elements.h"

namespace fixtop {

void FileWalk::Read(const std::string& file) {
    ReadOne(file, ModelFileOrigin::kCaller, nullptr);
}

void FileWalk::Include(const std::string& file, FindingPlace from) {
    ReadOne(file, ModelFileOrigin::kInclude, &from);
}

void FileWalk::ReadOne(const std::string& file, ModelFileOrigin origin, const FindingPlace* from) {
    if (read_.contains(file)) return;
    if (depth_ > kMostIncludes || read_.size() >= most_files_) {
        return findings_.Mistake(
            *from, "file " + file + " is not read: too many files include " + "each other");
    }
    read_.insert(file);
    ++depth_;
    const ElementVisits visits = {[this](const CheckedElement& root) { return TakesRoot(root); },
                                  [this](const CheckedElement& element) {
                                      if (CheckElement(root_, element, findings_)) {
                                          OnElement(element);
                                      }
                                  }};
    ReadElements(file, origin, has_resources_, from, visits, findings_);
    --depth_;
}

bool FileWalk::TakesRoot(const CheckedElement& root) {
    if (!has_start_) start_ = root.place;
    has_start_ = true;
    if (root.name == root_.name) return true;
    findings_.Mistake(root.place, "nobody reads <" + root.name + ">; the file has to begin with <" +
                                      root_.name + ">");
    return false;
}

}  // namespace fixtop
