// SPDX-License-Identifier: Apache-2.0
#include "live/basis_tree.h"

#include <charconv>

#include "casehost/units.h"
#include "fixtop/host/local_services.h"
#include "live/basis_spec.h"
#include "live/case.h"
#include "naming/references.h"

namespace fixtop::casehost {

namespace {

using Kind = BasisElement::Kind;

constexpr std::string_view kStem = "Spec.";

enum StatusBits : unsigned { kAdjustable = 0x01, kSpecified = 0x04, kHoldsValue = 0x10 };

host::Viewable* ViewOf(Node* node) {
    return node ? node->View() : nullptr;
}

// How clients are told a number: in the default unit of its quantity, which they ask the services
// for. Without a quantity as it is.
class ClientUnit {
 public:
    ClientUnit() = default;
    explicit ClientUnit(const BasisElement& data) : services_(host::LocalServices()) {
        const Quantity* quantity = FindQuantity(data.quantity);
        if (services_ && quantity) {
            unit_ = services_->def_unit(quantity->type, services_->DefaultUnits());
        }
    }

    double ToClient(double internal) const {
        return unit_ ? services_->calc_ounit(internal, unit_) : internal;
    }
    double ToInternal(double told) const {
        return unit_ ? services_->calc_unit(told, unit_) : told;
    }

 private:
    host::HostServices* services_ = nullptr;
    const host::UnitRecord* unit_ = nullptr;
};

}  // namespace

class BasisTree::Variable final : public host::ProcessVariable {
 public:
    Variable(Node& basis, StoreWatch& watch, const BasisElement& data)
        : basis_(basis), watch_(watch), adjustable_(data.adjustable), fixed_(data.fixed) {
        Take(data.number, data.state == VariableState::specified);
    }
    bool CanSpecify() override { return !fixed_; }
    void SetSpecified(double number) override { Store(unit_.ToInternal(number), true); }
    void SetCalculated(double number) override { Store(unit_.ToInternal(number), false); }

    // From now on clients see the number in this unit.
    void TellIn(const ClientUnit& unit) {
        unit_ = unit;
        value = unit_.ToClient(internal_);
    }
    double Internal() const { return internal_; }
    VariableState State() const {
        if (!(status_bits & kHoldsValue)) return VariableState::missing;
        return IsSpecified() ? VariableState::specified : VariableState::calculated;
    }

 private:
    bool IsSpecified() const { return (status_bits & kSpecified) != 0; }
    void Take(double number, bool specified) {
        internal_ = number;
        value = unit_.ToClient(number);
        const bool holds = number != kEmpty;
        status_bits = (adjustable_ ? kAdjustable : 0u) | (holds ? kHoldsValue : 0u) |
                      (holds && specified ? kSpecified : 0u);
    }
    void Store(double number, bool specified) {
        if (!watch_.MayStore()) return;
        watch_.InStore();
        const bool same_kind = IsSpecified() == (specified && number != kEmpty);
        if (same_kind && IsSameNumber(value, number)) {
            value = number;
            return;
        }
        Take(number, specified);
        basis_.OwnerCase().ValueStored(basis_);
    }

    Node& basis_;
    StoreWatch& watch_;
    bool adjustable_;
    bool fixed_;
    double internal_ = kEmpty;
    ClientUnit unit_;
};

struct BasisTree::Element {
    // Without what follows.
    BasisElement data;
    host::Text moniker;
    // In the order of their paths.
    std::vector<Node*> objects;
    std::unique_ptr<Variable> variable;
    Elements elements;
};

BasisTree::BasisTree(Node& basis, StoreWatch& watch) : basis_(basis), watch_(watch) {}

BasisTree::~BasisTree() = default;

void BasisTree::Build(const std::vector<BasisElement>& elements,
                      std::vector<CaseProblem>& problems) {
    all_.clear();
    elements_ = Make(elements, problems);
}

BasisTree::Elements BasisTree::Make(const std::vector<BasisElement>& data,
                                    std::vector<CaseProblem>& problems) {
    Elements made;
    for (const BasisElement& each : data) {
        made.push_back(std::make_unique<Element>());
        Element& element = *made.back();
        element.data = each;
        element.data.elements.clear();
        element.moniker = host::Text(":" + std::string(kStem) + std::to_string(all_.size()));
        all_.push_back(&element);
        ForEachObjectPath(each, [&](const std::string& path) {
            element.objects.push_back(basis_.OwnerCase().FindByPath(path, nullptr));
            if (element.objects.back() || path.empty()) return;
            problems.push_back({"Basis: " + each.tag, "object \"" + path + "\" names no object"});
        });
        if (each.kind == Kind::variable) {
            element.variable = std::make_unique<Variable>(basis_, watch_, each);
        }
        element.elements = Make(each.elements, problems);
    }
    return made;
}

std::vector<BasisElement> BasisTree::DataOf(const Elements& elements) {
    std::vector<BasisElement> data;
    for (const auto& element : elements) {
        BasisElement& out = data.emplace_back(element->data);
        auto object = element->objects.begin();
        ForEachObjectPath(out, [&](std::string& path) {
            Node* node = *object++;
            const bool there = node && !node->IsDeleted();
            path = there ? node->OwnerCase().PathOf(*node, nullptr) : std::string();
        });
        if (element->variable) {
            out.number = element->variable->Internal();
            out.state = element->variable->State();
        }
        out.elements = DataOf(element->elements);
    }
    return data;
}

void BasisTree::Add(const Elements& elements, SpecInfo& info) {
    for (const auto& each : elements) {
        const BasisElement& data = each->data;
        if (data.kind == Kind::group) {
            Add(each->elements, info.AddChild(data.tag));
            continue;
        }
        if (data.kind == Kind::table) {
            AddTable(*each, info);
            continue;
        }
        host::CSpecElement& element = info.Add(data.tag);
        element.moniker = each->moniker;
        element.custom = data.kind == Kind::custom;
        element.status_holder = data.kind == Kind::status ? each.get() : nullptr;
        const ClientUnit unit(data);
        if (each->variable) each->variable->TellIn(unit);
        element.process_variable = each->variable.get();
        if (data.kind == Kind::object) {
            element.attached_object = ViewOf(each->objects.front());
            element.attached_identity =
                element.attached_object ? element.attached_object->Identity() : 0;
        }
        if (data.kind == Kind::number || data.kind == Kind::custom) {
            element.number = unit.ToClient(data.number);
        }
        if (data.kind == Kind::text || data.kind == Kind::custom) {
            element.value_text = host::Text(data.text);
        }
        if (data.kind == Kind::document) element.extra_text = host::Text(data.text);
    }
}

void BasisTree::AddTable(const Element& element, SpecInfo& info) {
    host::ArraySetBlock& block = info.AddArraySet(element.data.tag);
    auto object = element.objects.begin();
    for (const BasisColumn& column : element.data.columns) {
        block.source_names.Append(host::Text(column.name));
        if (column.name == kObjectColumn) {
            host::GrowableArray<host::Viewable*> objects;
            for (std::size_t i = 0; i < column.objects.size(); ++i) {
                objects.Append(ViewOf(*object++));
            }
            block.source_objects.Append(objects);
        } else {
            host::GrowableArray<double> numbers;
            for (double number : column.numbers) numbers.Append(number);
            block.source_numbers.Append(numbers);
        }
    }
}

void BasisTree::ForgetDeleted() {
    for (Element* element : all_) {
        for (Node*& node : element->objects) {
            if (node && node->IsDeleted()) node = nullptr;
        }
    }
}

bool BasisTree::Describe(std::string_view stem, host::VarDescription::Facts& out) const {
    if (!Skip(stem, kStem)) return false;
    std::size_t number = 0;
    const char* const end = stem.data() + stem.size();
    const auto [stop, error] = std::from_chars(stem.data(), end, number);
    if (error != std::errc() || stop != end || number >= all_.size()) return false;
    const Quantity* quantity = FindQuantity(all_[number]->data.quantity);
    if (!quantity) return false;
    out.kind = host::kPartReal;
    out.type = VariableTypeOfUnitType(quantity->type);
    out.unit_type = quantity->type;
    return true;
}

}  // namespace fixtop::casehost
