// SPDX-License-Identifier: Apache-2.0
#pragma once

// The class records of the host: a tree of class words. The records live as long as the process.

#include <string_view>

#include "casehost/unit_op_names.h"
#include "fixtop/host/object_type.h"

namespace fixtop::casehost {

class ObjectType final : public host::ObjectTypeInfo {
 public:
    ObjectType(const char* word, const ObjectType* base) : ObjectType(host::Text(word), base) {}
    ObjectType(host::Text word, const ObjectType* base) : word_(std::move(word)), base_(base) {}

    bool IsA(const host::ObjectTypeInfo* other) const override {
        for (const ObjectType* type = this; type; type = type->base_) {
            if (type == other) return true;
        }
        return false;
    }
    const host::Text& DisplayName() const override { return word_; }
    const host::Text& ClassName() const override { return word_; }

 private:
    host::Text word_;
    const ObjectType* base_;
};

// What the part of a case that an object stands in makes of a class word that is not known.
enum class TypeFamily { unit_op, utility, data_table, reaction, published };

namespace types {

inline const ObjectType kViewable("ViewableObject", nullptr);
inline const ObjectType kCase("SimulationCase", &kViewable);
inline const ObjectType kOnlineManager("OnlineConnectivityManager", &kViewable);
inline const ObjectType kPublished("RTIVariable", &kViewable);
inline const ObjectType kSimulationObject("SimulationObject", &kViewable);
inline const ObjectType kFlowSheet("FlowSheet", &kSimulationObject);
inline const ObjectType kSolver("FlowSheetSolver", &kSimulationObject);
inline const ObjectType kBasis("BasisManager", &kSimulationObject);
inline const ObjectType kCorrelation("HovexCorrelationObject", &kSimulationObject);
inline const ObjectType kReaction("ReactionObject", &kSimulationObject);
inline const ObjectType kDataTable("ProcessDataTableObject", &kSimulationObject);
inline const ObjectType kUtility("UtilityObject", &kSimulationObject);
inline const ObjectType kFlowSheetObject("FlowSheetObject", &kSimulationObject);
inline const ObjectType kStream("StreamObject", &kFlowSheetObject);
inline const ObjectType kMaterialStream(words::kMaterialStream, &kStream);
inline const ObjectType kUnitOp("UnitOpObject", &kFlowSheetObject);
inline const ObjectType kTemplateOp(words::kTemplate, &kUnitOp);

// The record of a class word, null for an unknown one.
const ObjectType* Find(std::string_view word);
// The same, but an unknown word becomes a class of its own below the family's.
const ObjectType* FindOrMake(std::string_view word, TypeFamily family);

}  // namespace types

}  // namespace fixtop::casehost
