// SPDX-License-Identifier: Apache-2.0
#include "model/units_list.h"

#include "diagnostics/module_log.h"
#include "platform/file_search.h"
#include "platform/names.h"
#include "platform/no_memory.h"
#include "xml/message_text.h"
#include "xml/xml_file.h"

namespace fixtop {

namespace {

constexpr char kNotInitialized[] = "Units not initiliazed";
constexpr char kNotFound[] = "Unit not found";
constexpr char kLibraryEnding[] = ".dll";
constexpr char kBuiltInDefinitions[] = "CCDM_UOMDefinitions.xml";
constexpr int kDetailLevel = 6;

void LogDetail(const std::string& text) {
    LogAtLevel(text.c_str(), kDetailLevel);
}

void LogUnknownUnit(const std::string& unit) {
    LogDetail(MessageText("Unable to locate unit %s in units list", unit.c_str()));
}

// The adapter, which has the built-in ones, looks for a file first.
void TellOwnDefinitions(const std::string& name) {
    if (name != kBuiltInDefinitions) return;
    const std::string path = FindFileOnPath(name);
    if (!path.empty()) TellReplaced(path);
}

}  // namespace

void CCDMUnitsList::SetProvider(const char* module) {
    provider_.SetText(module);
    Attach();
}

void CCDMUnitsList::SetInitString(const char* text) {
    init_string_.SetText(text);
    Attach();
}

// An offered module goes before the one that is loaded, and stays when this list ends.
ModuleHandle CCDMUnitsList::FindAdapter() {
    const std::string name = provider_.ToText();
    if (ProcessModules().Offers(name.c_str())) return LoadModule(name.c_str());
    const std::string file = std::string(kUnitAdapterName) + kLibraryEnding;
    if (SameName(name, kUnitAdapterName) || SameName(name, file)) {
        loaded_adapter_ = LoadModule(file.c_str());
    }
    return loaded_adapter_;
}

void CCDMUnitsList::Attach() {
    if (initialized_ || provider_.IsNull() || init_string_.IsNull()) return;
    const ModuleHandle adapter = FindAdapter();
    const auto create =
        reinterpret_cast<CreateUnitSourceFunction>(FindFunction(adapter, "CreateUnitSource"));
    delete_source_ =
        reinterpret_cast<DeleteUnitSourceFunction>(FindFunction(adapter, "DeleteUnitSource"));
    if (create == nullptr || delete_source_ == nullptr) {
        LogMessage(MessageText("Unable to locate CCDM unit conversion adpater %s",
                               provider_.ToText().c_str())
                       .c_str());
        return Detach();
    }
    source_ = OrNoMemory(create);
    const std::string init_string = init_string_.ToText();
    initialized_ =
        source_ != nullptr && OrNoMemory([&] { return source_->Init(init_string.c_str()); });
    if (initialized_) return TellOwnDefinitions(init_string);
    LogProblem(adapter);
    Detach();
    LogMessage("Unable to initialize CCDM unit conversion adpater");
}

// An adapter need not say why it refuses its definitions.
void CCDMUnitsList::LogProblem(ModuleHandle adapter) const {
    const auto problem =
        reinterpret_cast<UnitSourceProblemFunction>(FindFunction(adapter, "UnitSourceProblem"));
    const std::string text = problem == nullptr || source_ == nullptr ? "" : problem(source_);
    if (!text.empty()) LogMessage(MessageText("  Unit definitions: %s", text.c_str()).c_str());
}

void CCDMUnitsList::Detach() {
    if (source_ != nullptr) {
        source_->Destroy();
        delete_source_(source_);
    }
    if (loaded_adapter_ != nullptr) UnloadModule(loaded_adapter_);
    source_ = nullptr;
    loaded_adapter_ = nullptr;
    initialized_ = false;
}

int CCDMUnitsList::QuantityNumber(const FIValue& quantity) const {
    const int number = quantity.IsText() ? source_->QuantityId(quantity.CStr()) : quantity.AsInt();
    return number < 0 ? 0 : number;
}

int CCDMUnitsList::UnitNumber(const FIValue& unit) const {
    return unit.Kind() == FIValue::kInt ? unit.AsInt() : source_->UnitId(unit.ToText().c_str(), 0);
}

// Whether a row of the application's unit forbids another one; logs which.
bool CCDMUnitsList::IsMapped(const std::string& app, const char* quantity, int number,
                             bool is_default) const {
    const auto [first, last] = app_to_ccdm_.equal_range(app);
    for (auto row = first; row != last; ++row) {
        const char* what = nullptr;
        if (row->second.quantity == number) {
            what = number == 0 ? "all quantities" : quantity;
        } else if (is_default && row->second.isDefault) {
            what = "default quantity";
        }
        if (what == nullptr) continue;
        LogDetail(MessageText("Unit %s already mapped in units list for %s", app.c_str(), what));
        return true;
    }
    return false;
}

// A row for numbers without a unit gives no name that could be asked for.
void CCDMUnitsList::Enter(const std::string& app, const std::string& ccdm, int quantity,
                          bool is_default) {
    app_to_ccdm_.emplace(app, CCDMUnitRecord{FIValue(ccdm.c_str()), quantity, is_default});
    if (app.empty()) return;
    ccdm_to_app_.emplace(ccdm, CCDMUnitRecord{FIValue(app.c_str()), quantity, is_default});
}

void CCDMUnitsList::AddTranslation(const std::string& app, const std::string& ccdm,
                                   const char* quantity, bool is_default) {
    if (source_ == nullptr) return;
    const int number = quantity == nullptr ? 0 : QuantityNumber(FIValue(quantity));
    if (IsMapped(app, quantity, number, is_default)) return;
    if (source_->UnitId(ccdm.c_str(), number) < 1) return LogUnknownUnit(ccdm);
    Enter(app, ccdm, number, is_default);
}

const CCDMUnitRecord* CCDMUnitsList::FindTranslation(const std::string& app_unit,
                                                     int quantity) const {
    const CCDMUnitRecord* for_all = nullptr;
    const auto [first, last] = app_to_ccdm_.equal_range(app_unit);
    for (auto row = first; row != last; ++row) {
        if (row->second.quantity == quantity) return &row->second;
        if (row->second.quantity == 0) for_all = &row->second;
    }
    return for_all;
}

bool CCDMUnitsList::HasTranslation(const char* app_unit, const FIValue& quantity) const {
    return initialized_ && FindTranslation(app_unit, QuantityNumber(quantity)) != nullptr;
}

bool CCDMUnitsList::HasUnit(int quantity, int unit) {
    if (!initialized_ || unit < 1) return false;
    if (quantity == known_quantity_ && unit == known_unit_) return true;
    if (source_->UnitId(source_->UnitName(unit), quantity) != unit) return false;
    known_quantity_ = quantity;
    known_unit_ = unit;
    return true;
}

bool CCDMUnitsList::ToCcdmUnit(const FIValue& app_unit, const FIValue& quantity, FIValue& out) {
    if (!initialized_) {
        out.SetText(kNotInitialized);
        return false;
    }
    const int number = QuantityNumber(quantity);
    const std::string unit = app_unit.ToText();
    if (const CCDMUnitRecord* row = FindTranslation(unit, number)) {
        out = row->mapped;
        return true;
    }
    if (source_->UnitId(unit.c_str(), number) < 1) {
        LogUnknownUnit(unit);
        out.SetText(kNotFound);
        return false;
    }
    Enter(unit, unit, number, false);
    out.SetText(unit);
    return true;
}

bool CCDMUnitsList::ToAppUnit(const FIValue& ccdm_unit, const FIValue& quantity,
                              FIValue& out) const {
    if (!initialized_) {
        out.SetText(kNotInitialized);
        return false;
    }
    const int number = QuantityNumber(quantity);
    const std::string unit = ccdm_unit.ToText();
    const CCDMUnitRecord* taken = nullptr;
    const auto [first, last] = ccdm_to_app_.equal_range(unit);
    for (auto row = first; row != last; ++row) {
        const CCDMUnitRecord& record = row->second;
        if (record.quantity == number) {
            out = record.mapped;
            return true;
        }
        if (record.isDefault || (record.quantity == 0 && taken == nullptr)) taken = &record;
    }
    if (taken == nullptr) {
        LogUnknownUnit(unit);
        out.SetText(kNotFound);
        return false;
    }
    out = taken->mapped;
    return true;
}

double CCDMUnitsList::Convert(double value, const FIValue& from_unit,
                              const FIValue& to_unit) const {
    if (!initialized_) return value;
    return source_->Convert(value, UnitNumber(from_unit), UnitNumber(to_unit));
}

}  // namespace fixtop
