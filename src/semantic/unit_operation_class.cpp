// SPDX-License-Identifier: Apache-2.0
#include "semantic/unit_operation_class.h"

#include <cstring>

#include "semantic/column_summary.h"
#include "semantic/idioms.h"

namespace fixtop::semantic {
namespace {

// Compressors and expanders share a class; this word tells them apart.
void SetIsCompressor(FIIteratorBase& it) {
    it.SetVarText("IsCompressor", "YES");
}

void SetIsExpander(FIIteratorBase& it) {
    it.SetVarText("IsCompressor", "NO");
}

void SummarizeColumn(FIIteratorBase& it) {
    SetColumnBottom(it);
    ComputeColumnRatios(it);
}

struct UnitOperationRow {
    const char* type;
    const char* class_name;
    void (*set_variables)(FIIteratorBase& it) = nullptr;
};

constexpr UnitOperationRow kUnitOperationRows[] = {
    {"PipeSegObject", "QSIPipe"},
    {"CompressorObject", "QSICompressor", SetIsCompressor},
    {"ExpandOpObject", "QSICompressor", SetIsExpander},
    {"FlashTankObject", "QSISeparator"},
    {"Sep3OpObject", "QSISeparator"},
    {"TankOpObject", "QSISeparator"},
    {"ValveOpObject", "QSIValve"},
    {"PumpOpObject", "QSIPump"},
    {"HeatExOpObject", "QSIHeatExchanger"},
    {"MixerOpObject", "QSIMixer"},
    {"TeeOpObject", "QSITee"},
    {"DistillationObject", "QSIDistillationColumn", SummarizeColumn},
    // Only the first kind of column gets a bottom stage and ratios.
    {"ColumnOpObject", "QSIDistillationColumn"},
    {"ConversionReactorOpObject", "QSIConversionReactor"},
    {"EquilibriumReactorOpObject", "QSIEquilibriumReactor"},
    {"GibbsReactorOpObject", "QSIGibbsReactor"},
    {"HeaterOpObject", "QSIHeaterCooler"},
    {"CoolerOpObject", "QSIHeaterCooler"},
};

}  // namespace

bool ClassifyUnitOperation(FIIteratorBase& it, FIValue& subclass) {
    const FIValue type = ReadType(it);
    for (const UnitOperationRow& row : kUnitOperationRows) {
        if (std::strcmp(type.CStr(), row.type) != 0) continue;
        subclass.SetText(row.class_name);
        if (row.set_variables) row.set_variables(it);
        return true;
    }
    return false;
}

}  // namespace fixtop::semantic
