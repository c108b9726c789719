// SPDX-License-Identifier: Apache-2.0
#pragma once

// Shapes in case files: what the variables of all objects of one kind share, told once by name.

#include <string>
#include <unordered_map>

#include "casehost/case_data.h"
#include "json/json_text.h"
#include "json/json_tree.h"

namespace fixtop::casehost::json {

using SharedSpec = std::shared_ptr<const VariableSpec>;
using Shape = std::vector<SharedSpec>;
// The names are those of the tree that the shapes were read from.
using Shapes = std::unordered_map<std::string_view, Shape>;

Shapes ReadShapes(Tree& tree, const JsonNode& object);
SharedSpec ReadSpec(Tree& tree, const JsonNode& node, std::string_view name);

// The shapes of the objects of a case, under names given in the order of their appearance. Holds
// pointers into the objects.
class ShapeNames {
 public:
    struct Named {
        std::string name;
        const ObjectData* example;
    };

    void Collect(const std::vector<ObjectData>& objects);
    const std::string& Of(const ObjectData& object);
    const std::vector<Named>& All() const { return shapes_; }

 private:
    std::size_t NumberOf(const VariableSpec& spec);

    std::vector<Named> shapes_;
    std::unordered_map<const VariableSpec*, std::size_t> spec_numbers_;
    std::unordered_multimap<std::string, const VariableSpec*> specs_by_name_;
    std::unordered_map<std::string, std::size_t> shape_by_key_;
    std::unordered_map<std::string, int> shapes_of_type_;
};

// An object with a member for each shape, at `depth`.
void WriteShapes(JsonText& text, const ShapeNames& shapes, int depth);

}  // namespace fixtop::casehost::json
