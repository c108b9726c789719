// SPDX-License-Identifier: Apache-2.0
#pragma once

// Instance counters: for each counted class the objects now alive and the objects ever made,
// written to the debug output in four groups. Plain integers, not synchronised.

namespace fixtop {

enum class CountGroup { kHostEntries, kFramework, kAutomation, kMapping };

// Every counted class, with its group: the reports print the rows in this order.
#define FIXTOP_COUNTED_CLASSES(ROW)            \
    ROW(kHostEntries, HovexOptions)            \
    ROW(kHostEntries, HSpecFilter)             \
    ROW(kHostEntries, HSpecContext)            \
    ROW(kHostEntries, HSpecCursorBase)         \
    ROW(kHostEntries, HSpecType)               \
    ROW(kHostEntries, HSpecEntry)              \
    ROW(kHostEntries, HArraySetContext)        \
    ROW(kHostEntries, HArraySetCursorBase)     \
    ROW(kHostEntries, HArraySetEntry)          \
    ROW(kHostEntries, HArraySetElemContext)    \
    ROW(kHostEntries, HArraySetElemCursorBase) \
    ROW(kHostEntries, HArraySetElemEntry)      \
    ROW(kHostEntries, HVarsContext)            \
    ROW(kHostEntries, HVarsCursorBase)         \
    ROW(kHostEntries, HVarsEntry)              \
    ROW(kHostEntries, HVarDimsContext)         \
    ROW(kHostEntries, HVarDimsCursorBase)      \
    ROW(kHostEntries, HVarDimsEntry)           \
    ROW(kFramework, FIIterator)                \
    ROW(kFramework, FIReference)               \
    ROW(kFramework, FICollectionBase)          \
    ROW(kFramework, FICollectionIteratorBase)  \
    ROW(kFramework, FICollectionElement)       \
    ROW(kFramework, FIVarSet)                  \
    ROW(kAutomation, CQSINode)                 \
    ROW(kAutomation, CQSINodeIterator)         \
    ROW(kAutomation, CQSIAttribute)            \
    ROW(kAutomation, CQSIAttributeIterator)    \
    ROW(kAutomation, CQSICollection)           \
    ROW(kAutomation, CQSICollectionIterator)   \
    ROW(kMapping, AncestorPath)                \
    ROW(kMapping, CDTBase)                     \
    ROW(kMapping, CDTFilter)                   \
    ROW(kMapping, CDTClassList)                \
    ROW(kMapping, CDTVariableIterator)         \
    ROW(kMapping, CDTVariable)                 \
    ROW(kMapping, CDTVariableFilter)           \
    ROW(kMapping, CFilteredVariables)          \
    ROW(kMapping, CCDMClassLibrary)            \
    ROW(kMapping, CCDMClass)                   \
    ROW(kMapping, CCDMAttribute)               \
    ROW(kMapping, CCDMEnumeration)

enum class CountedClass : int {
#define FIXTOP_ENUMERATOR(group, name) name,
    FIXTOP_COUNTED_CLASSES(FIXTOP_ENUMERATOR)
#undef FIXTOP_ENUMERATOR
};

struct InstanceCount {
    int alive = 0;
    int total = 0;
};

InstanceCount& CountOf(CountedClass counted) noexcept;

// The base that makes a class counted: class X : private Counted<CountedClass::X>.
template <CountedClass kClass>
class Counted {
 protected:
    Counted() noexcept { Raise(); }
    Counted(const Counted&) noexcept { Raise(); }
    Counted& operator=(const Counted&) noexcept = default;
    ~Counted() { --CountOf(kClass).alive; }

 private:
    static void Raise() noexcept {
        InstanceCount& count = CountOf(kClass);
        ++count.alive;
        ++count.total;
    }
};

// Writes one line for each class of the group, indented by `indent` blanks, at most 80.
void ReportInstances(CountGroup group, int indent);

}  // namespace fixtop
