// SPDX-License-Identifier: Apache-2.0
#include "semantic/column_summary.h"

#include "semantic/column_vessels.h"
#include "semantic/idioms.h"

namespace fixtop::semantic {
namespace {

constexpr int kElementLimit = 10000;

using NameList = std::span<const char* const>;

// The flows of one basis.
constexpr const char* kMolarReflux[] = {"Reflux Molar Flow"};
constexpr const char* kMassReflux[] = {"Reflux Mass Flow"};
constexpr const char* kMolarTops[] = {"Overhead Molar Flow", "Distillate Molar Flow"};
constexpr const char* kMassTops[] = {"Overhead Mass Flow", "Distillate Mass Flow"};
constexpr const char* kMolarBoilup[] = {"BoilUp Molar Flow"};
constexpr const char* kMassBoilup[] = {"BoilUp Mass Flow"};
constexpr const char* kMolarBottoms[] = {"Liquid Molar Flow"};
constexpr const char* kMassBottoms[] = {"Liquid Mass Flow"};
constexpr const char* kAllMolarTops[] = {"Distillate Molar Flow", "Overhead Molar Flow",
                                         "Heavy Liquid Molar Flow"};
constexpr const char* kAllMassTops[] = {"Distillate Mass Flow", "Overhead Mass Flow",
                                        "Heavy Liquid Mass Flow"};
constexpr const char* kAllMolarBottoms[] = {"HvyLiq Molar Flow", "Liquid Molar Flow"};
constexpr const char* kAllMassBottoms[] = {"HvyLiq Mass Flow", "Liquid Mass Flow"};

// What a vessel sends back into the column, beside what leaves it there.
struct ReturnRow {
    const char* vessel;
    NameList returned;
    NameList product;
    const char* ratio;
    const char* rate;
};

constexpr ReturnRow kReturnRows[] = {
    {kCondenser, kMolarReflux, kMolarTops, "MolarRefluxRatio", "MolarDistillateRate"},
    {kCondenser, kMassReflux, kMassTops, "MassRefluxRatio", "MassDistillateRate"},
    {kReboiler, kMolarBoilup, kMolarBottoms, "MolarBoilupRatio", "MolarBottomsRate"},
    {kReboiler, kMassBoilup, kMassBottoms, "MassBoilupRatio", "MassBottomsRate"},
};

struct ProductRow {
    const char* vessel;
    NameList product;
    const char* ratio;
};

struct FeedRow {
    const char* feed;
    ProductRow products[2];
};

constexpr FeedRow kFeedRows[] = {
    {"Feed Stream Comp Molar Flows",
     {{kCondenser, kAllMolarTops, "MolarDistillateToFeed"},
      {kReboiler, kAllMolarBottoms, "MolarBottomsToFeed"}}},
    {"Feed Stream Comp Mass Flows",
     {{kCondenser, kAllMassTops, "MassDistillateToFeed"},
      {kReboiler, kAllMassBottoms, "MassBottomsToFeed"}}},
};

void SetReal(FIIteratorBase& it, const char* variable, double number) {
    it.SetVarText(variable, FIValue::OfReal(number));
}

}  // namespace

double SumVesselValues(FIIteratorBase& it, const char* vessel, NameList names) {
    if (!FindVessel(it, vessel)) return 0.0;
    double sum = 0.0;
    for (const char* name : names) sum += ReadChildValue(it, name).AsDouble();
    it.Up();
    it.Up();
    return sum;
}

double SumNestedValues(FIIteratorBase& it, const char* name) {
    if (!SeekNames(it, {name})) return 0.0;
    double sum = 0.0;
    for (int i = 0; i < kElementLimit && it.Down(i); ++i) {
        if (it.Down(0)) {
            sum += ReadValue(it).AsDouble();
            it.Up();
        }
        it.Up();
    }
    it.Up();
    return sum;
}

std::optional<std::int64_t> CountTrays(FIIteratorBase& it) {
    if (!SeekNames(it, {"Number of Trays"})) return std::nullopt;
    const int trays = ReadValue(it).AsInt();
    it.Up();
    return trays;
}

void SetColumnBottom(FIIteratorBase& it) {
    const std::optional<std::int64_t> trays = CountTrays(it);
    if (trays) it.SetVarText("Bottom", FIValue::OfInt(static_cast<int>(*trays + 1)));
}

void ComputeColumnRatios(FIIteratorBase& it) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    for (const ReturnRow& row : kReturnRows) {
        const double product = SumVesselValues(*walker, row.vessel, row.product);
        if (product == 0.0) continue;
        SetReal(it, row.ratio, SumVesselValues(*walker, row.vessel, row.returned) / product);
        SetReal(it, row.rate, product);
    }
    for (const FeedRow& row : kFeedRows) {
        const double feed = SumNestedValues(*walker, row.feed);
        if (!(feed > 0.0)) continue;
        for (const ProductRow& product : row.products) {
            const double flow = SumVesselValues(*walker, product.vessel, product.product);
            if (flow > 0.0) SetReal(it, product.ratio, flow / feed);
        }
    }
}

}  // namespace fixtop::semantic
