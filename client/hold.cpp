// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/hold.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "case_state.h"
#include "texts.h"

namespace fixtop::client {

namespace {

constexpr char kSolved[] = "Solve is complete";
constexpr char kNotStored[] = "Value not stored";
constexpr char kComposition[] = "Object(QSICompositionProperties)";
// A sum of fractions that differs from 1 by no more differs by rounding alone.
constexpr double kRounding = 1e-12;

Ref<FIEntry> EntryOf(const Node& node) {
    return Ref<FIEntry>::Adopt(Given(FixtopEntryOf(&node.Iterator())));
}

std::string Trimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string::npos) return "";
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

std::vector<std::string> PartsOf(const std::string& list) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t comma = 0; comma != std::string::npos; begin = comma + 1) {
        comma = list.find(',', begin);
        parts.push_back(Trimmed(list.substr(begin, comma - begin)));
    }
    return parts;
}

std::string ToText(double number) {
    return FIValue::OfReal(number).ToText();
}

// A composition of the case whose stream is held.
struct HeldComposition {
    Node array;
    std::vector<FIValue> before;  // of the elements

    double Sum() const {
        double sum = 0;
        for (const Node& element : array.Children()) sum += element.Attribute("value").AsDouble();
        return sum;
    }
};

struct HeldStream {
    Node node;
    Ref<FIEntry> entry;
};

std::vector<FIValue> ValuesOf(const Node& array) {
    std::vector<FIValue> values;
    for (const Node& element : array.Children()) values.push_back(element.Attribute("value"));
    return values;
}

// Writes past the hold that each write of an iterator takes and gives back.
void Put(const Node& element, const FIValue& value) {
    FIValue refused;
    EntryOf(element)->SetAttribute(FIValue("value"), value, 0, refused);
    ThrowIfRefused(element, refused.ToText());
}

bool Stands(const Node& element, const FIValue& stored) {
    const FIValue now = element.Attribute("value");
    return now.IsNull() == stored.IsNull() && now.AsDouble() == stored.AsDouble();
}

}  // namespace

// The compositions that were stored to. The host ends the edit of a stream when no other one is
// held.
class Hold::Compositions {
 public:
    // Null when the node is no fraction of a stream's composition; else its stream is held.
    std::optional<Node> Take(const Node& node) {
        const Node element = NodeOfCase(node);
        const auto array = element.Parent();
        const auto stream = array ? array->Parent() : std::nullopt;
        if (!stream || !array->IsArray() || stream->IsArray()) return std::nullopt;
        // Each other array takes the hold itself.
        if (EntryOf(*array)->CanHold() || !TakeStream(*stream)) return std::nullopt;
        const auto same = [&](const HeldComposition& each) { return each.array == *array; };
        if (std::ranges::none_of(compositions_, same)) {
            compositions_.push_back({*array, ValuesOf(*array)});
        }
        return element;
    }

    void Release(Released& told) {
        for (const HeldComposition& each : compositions_) Judge(each, told);
        compositions_.clear();
        // All of them leave the set of held ones; what the host then ends is the last.
        for (const HeldStream& each : streams_) each.entry->BeginBatch();
        if (!streams_.empty()) streams_.pop_back();
        for (const HeldStream& each : streams_) {
            if (each.entry->CanHold()) each.entry->BeginBatch();
        }
        streams_.clear();
    }

 private:
    bool TakeStream(const Node& node) {
        const auto same = [&](const HeldStream& each) { return each.node == node; };
        if (std::ranges::any_of(streams_, same)) return true;
        HeldStream stream{node, EntryOf(node)};
        if (!stream.entry->CanHold()) return false;
        streams_.push_back(std::move(stream));
        return true;
    }
    static void Judge(const HeldComposition& composition, Released& told) {
        const double sum = composition.Sum();
        const std::string path = composition.array.Path();
        if (!(sum > 0)) {
            Restore(composition);
            told.refused.push_back(path + ": the fractions sum to " + ToText(sum) +
                                   ", and stay as they were");
        } else if (std::abs(sum - 1) > kRounding) {
            told.normalised.push_back(path + ": the fractions sum to " + ToText(sum) +
                                      " and are normalised");
        }
    }
    static void Restore(const HeldComposition& composition) {
        const std::vector<Node> elements = composition.array.Children();
        const std::size_t count = std::min(elements.size(), composition.before.size());
        for (std::size_t i = 0; i < count; ++i) Put(elements[i], composition.before[i]);
    }

    std::vector<HeldStream> streams_;
    std::vector<HeldComposition> compositions_;
};

Hold::Hold(const Solver& solver)
    : compositions_(std::make_unique<Compositions>()), solver_(solver), batch_(solver) {}

Hold::~Hold() {
    try {
        Released told;
        compositions_->Release(told);
    } catch (const std::exception&) {
        // There is nobody to tell it to: the case is gone, or memory ran out.
    }
}

void Hold::Store(const Node& node, const std::string& typed, const std::string& unit) {
    if (const std::vector<Node> elements = ElementsOf(node); !elements.empty()) {
        const std::vector<std::string> parts = PartsOf(typed);
        if (parts.size() != elements.size()) {
            throw Refused(node.Path(), "expected a value for each element, " +
                                           std::to_string(elements.size()) + " and not " +
                                           std::to_string(parts.size()));
        }
        return StoreList(elements, parts, unit);
    }
    Store(node, TypedIn(node, typed, unit));
}

void Hold::Store(const Node& node, const Typed& typed) {
    const auto fraction = compositions_->Take(node);
    if (!fraction) return node.Store(typed.value, typed.unit);
    if (!typed.unit.empty()) node.ShowIn(typed.unit);
    Put(*fraction, typed.value);
    if (!Stands(*fraction, typed.value)) throw Refused(node.Path(), kNotStored);
}

// All or none: half of a list is another composition.
void Hold::StoreList(const std::vector<Node>& elements, const std::vector<std::string>& parts,
                     const std::string& unit) {
    std::vector<std::pair<Node, FIValue>> stores;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].empty()) continue;
        const Typed typed = TypedIn(elements[i], parts[i], unit);
        if (!typed.unit.empty()) elements[i].ShowIn(typed.unit);
        stores.emplace_back(elements[i], typed.value);
    }
    std::vector<std::pair<Node, FIValue>> formers;
    try {
        for (const auto& [element, value] : stores) {
            formers.emplace_back(element, element.Attribute("value"));
            Store(element, Typed{value, ""});
        }
    } catch (const Refused&) {
        // The last one did not take its value.
        if (!formers.empty()) formers.pop_back();
        for (const auto& [element, former] : formers) Store(element, Typed{former, ""});
        throw;
    }
}

Released Hold::Release(const Solver::Progress& progress) {
    Released told;
    compositions_->Release(told);
    if (solver_.IsComplete()) {
        told.solve = {true, kSolved, ""};
    } else {
        told.solve = batch_.Solve(progress);
    }
    return told;
}

Node NodeOfCase(const Node& node) {
    for (const Node::Side side : {Node::Side::kSpecified, Node::Side::kCalculated}) {
        if (auto raw = node.Raw(side)) return *raw;
    }
    return node;
}

std::vector<Node> ElementsOf(const Node& node) {
    const std::string type = node.Type();
    if (type == "Array") return node.Children();
    if (type != kComposition) return {};
    const auto basis = node.Find("CompositionBasis");
    const std::string by = basis ? basis->node.Text() : "";
    return node.Matches("Component." + (by.empty() ? "Mole" : by) + "Fraction");
}

}  // namespace fixtop::client
