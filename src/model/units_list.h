// SPDX-License-Identifier: Apache-2.0
#pragma once

// Maps between the unit names of an application and those of the data model, and holds the adapter
// that knows quantities, unit numbers and conversion. Without an adapter every question answers
// "Units not initiliazed" and values stay as they are.
//
// A quantity in an argument is a NULL for none, a number, or a name; a unit a number or a name.

#include <map>
#include <string>

#include "fixtop/value.h"
#include "model/unit_source.h"
#include "platform/modules.h"

namespace fixtop {

// The adapter that may be loaded by name. Another one must be offered by the host or the program:
// a file cannot bring code into the process.
inline constexpr char kUnitAdapterName[] = "QSIUOMAdapter2004_2";

struct CCDMUnitRecord {
    FIValue mapped;    // the name on the other side
    int quantity = 0;  // 0 for all quantities
    bool isDefault = false;
};

class CCDMUnitsList {
 public:
    CCDMUnitsList() = default;
    CCDMUnitsList(const CCDMUnitsList&) = delete;
    CCDMUnitsList& operator=(const CCDMUnitsList&) = delete;
    ~CCDMUnitsList() { Detach(); }

    bool Initialized() const { return initialized_; }
    // Null while there is no adapter.
    CCDMUnitSource* Source() const { return source_; }

    // When both are set the adapter is attached, once; why it fails is logged.
    void SetProvider(const char* module);
    void SetInitString(const char* text);

    // One row of the unit file; `quantity` is null for all quantities. An empty name of the
    // application is a number without a unit. Why a row is left out is logged. Nothing happens
    // without an adapter.
    void AddTranslation(const std::string& app, const std::string& ccdm, const char* quantity,
                        bool is_default);

    // The model's name of an application's unit: the row of this quantity, else the one for all
    // quantities. A unit without a row that the adapter knows is learned as itself. On false `out`
    // is the reason.
    bool ToCcdmUnit(const FIValue& app_unit, const FIValue& quantity, FIValue& out);
    // Whether a row of the unit file says what ToCcdmUnit answers.
    bool HasTranslation(const char* app_unit, const FIValue& quantity) const;
    // Whether the number is one of the quantity's units.
    bool HasUnit(int quantity, int unit);
    // The application's name of a unit of the model: the row of this quantity, else the last
    // default row, else the first for all quantities. On false `out` is the reason.
    bool ToAppUnit(const FIValue& ccdm_unit, const FIValue& quantity, FIValue& out) const;

    double Convert(double value, const FIValue& from_unit, const FIValue& to_unit) const;

 private:
    using Records = std::multimap<std::string, CCDMUnitRecord>;

    void Attach();
    void Detach();
    void LogProblem(ModuleHandle adapter) const;
    ModuleHandle FindAdapter();
    // Null when there is no row.
    const CCDMUnitRecord* FindTranslation(const std::string& app_unit, int quantity) const;
    int QuantityNumber(const FIValue& quantity) const;
    int UnitNumber(const FIValue& unit) const;
    bool IsMapped(const std::string& app, const char* quantity, int number, bool is_default) const;
    void Enter(const std::string& app, const std::string& ccdm, int quantity, bool is_default);

    bool initialized_ = false;
    FIValue provider_;
    FIValue init_string_;
    CCDMUnitSource* source_ = nullptr;
    DeleteUnitSourceFunction delete_source_ = nullptr;
    ModuleHandle loaded_adapter_ = nullptr;  // null for an offered one
    // The last one that HasUnit found, since all reads of a list ask for the same.
    int known_quantity_ = 0;
    int known_unit_ = 0;
    Records app_to_ccdm_;
    Records ccdm_to_app_;
};

}  // namespace fixtop
