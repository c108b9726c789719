// SPDX-License-Identifier: Apache-2.0
// Random paths on random trees against a second evaluator, which works on lists of nodes and knows
// no iterator.

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "path/tokenizer.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

using Random = std::mt19937;

int Pick(Random& random, int count) {
    return static_cast<int>(random() % count);
}

const char* PickName(Random& random) {
    static const char* const names[] = {"a", "b", "c", "d e"};
    return names[Pick(random, 4)];
}

void Grow(ScriptNode& node, Random& random, int levels, int& serial) {
    node.Set("serial", serial++);
    switch (Pick(random, 4)) {
        case 0:
            node.Set("value", Pick(random, 3));
            break;
        case 1:
            node.Set("value", 0.5 * Pick(random, 4));
            break;
        case 2:
            node.Set("value", PickName(random));
            break;
        default:
            break;
    }
    if (Pick(random, 2)) node.Set("mark", Pick(random, 2));
    if (levels == 0) return;
    for (int i = Pick(random, 5); i > 0; --i) {
        Grow(node.Add(PickName(random)), random, levels - 1, serial);
    }
}

std::string RandomPath(Random& random, int levels);

std::string RandomClause(Random& random, int levels) {
    static const char* const attributes[] = {"(value)", "(mark)", "(none)"};
    static const char* const values[] = {"=0", "=1", "=\"1.5\"", "=a", "=\"%v\"", "=\"%missing\""};
    std::string clause = "[";
    if (Pick(random, 3)) clause += RandomPath(random, levels);
    if (Pick(random, 2)) clause += attributes[Pick(random, 3)];
    if (Pick(random, 2)) clause += values[Pick(random, 6)];
    return clause += "]";
}

std::string RandomStep(Random& random, int levels) {
    static const char* const others[] = {"*", "", "%v", "%missing", "%n"};
    std::string step = Pick(random, 3) ? PickName(random) : others[Pick(random, 5)];
    if (Pick(random, 4) == 0) {
        step.append("#").append(Pick(random, 4) ? std::to_string(Pick(random, 4)) : "%n");
    }
    if (levels > 0 && Pick(random, 2)) {
        static const char* const operators[] = {"", "&", "|", "!", "|!", "&!"};
        step += RandomClause(random, levels - 1);
        while (Pick(random, 3) == 0) {
            step += operators[Pick(random, 6)];
            step += RandomClause(random, levels - 1);
        }
    }
    return step;
}

std::string RandomPath(Random& random, int levels) {
    std::string path = RandomStep(random, levels);
    while (Pick(random, 3) == 0) path.append(".").append(RandomStep(random, levels));
    return path;
}

class Evaluator {
 public:
    explicit Evaluator(std::map<std::string, FIValue> variables)
        : variables_(std::move(variables)) {}

    const ScriptNode* Walk(const ScriptNode& from, const PathStep& step) const {
        const ScriptNode* reached = Step(from, step);
        if (!reached || !step.next) return reached;
        return Walk(*reached, *step.next);
    }

 private:
    std::optional<FIValue> Variable(const std::string& name) const {
        const auto found = variables_.find(name);
        if (found == variables_.end()) return std::nullopt;
        return found->second;
    }

    const ScriptNode* Step(const ScriptNode& from, const PathStep& step) const {
        std::optional<std::string> name = step.name;
        if (step.isVariable) {
            const auto value = Variable(step.name);
            name = value ? std::optional<std::string>(value->ToText()) : std::nullopt;
        }
        std::optional<int> count;
        if (step.count.Kind() == FIValue::kInt) count = step.count.AsInt();
        if (step.count.IsText()) {
            const auto value = Variable(step.count.ToText());
            if (value) count = value->AsInt();
        }
        if (name == "" && !count) return Passes(from, step.filters.size(), step) ? &from : nullptr;

        const bool any = !name || *name == "" || *name == "*";
        std::vector<const ScriptNode*> passed;
        bool entered = false;
        for (const ScriptNode* child : from.children) {
            const bool named = any || child->name.ToText() == *name;
            entered = entered || named;
            if (!entered || (!named && !passed.empty())) continue;
            if (Passes(*child, step.filters.size(), step)) passed.push_back(child);
        }
        const std::size_t wanted = count ? *count : 0;
        return wanted < passed.size() ? passed[wanted] : nullptr;
    }

    // The result of the first `count` filters, asked from the last back to the first.
    bool Passes(const ScriptNode& node, std::size_t count, const PathStep& step) const {
        if (EndsEarly(node, count, step)) return true;
        if (count == 0) return true;
        const PathFilter& last = step.filters[count - 1];
        const bool own = Holds(node, *last.clause) != ((last.flags & 4) != 0);
        if (count == 1 || (last.flags & 1)) return own;
        return Passes(node, count - 1, step) && own;
    }

    // Whether a true list before an `|` among the first `count` filters decided.
    bool EndsEarly(const ScriptNode& node, std::size_t count, const PathStep& step) const {
        for (std::size_t i = 1; i < count; ++i) {
            if ((step.filters[i].flags & 1) && Passes(node, i, step)) return true;
        }
        return false;
    }

    bool Holds(const ScriptNode& node, const PathClause& clause) const {
        const ScriptNode* reached = Walk(node, *clause.step);
        if (!reached) return false;
        const PathStep* last = clause.step.get();
        while (last->next) last = last->next.get();
        if (last->attribute.IsNull() && !clause.value) return true;
        const std::string name = last->attribute.IsNull() ? "value" : last->attribute.ToText();
        for (const auto& [attribute, value] : reached->attributes) {
            if (attribute != name) continue;
            if (!clause.value) return true;
            const std::string wanted = clause.value->ToText();
            if (wanted[0] != '%') return Equal(value, *clause.value);
            const auto variable = Variable(wanted.substr(1));
            return variable && Equal(value, *variable);
        }
        return false;
    }

    static bool Equal(const FIValue& value, const FIValue& wanted) {
        if (value.IsText()) return wanted.IsText() && value.ToText() == wanted.ToText();
        // A text takes the kind of the number with which it is compared.
        if (value.Kind() == FIValue::kInt && wanted.IsText()) {
            return value.AsInt() == std::atoi(wanted.CStr());
        }
        return value.AsDouble() == wanted.AsDouble();
    }

    std::map<std::string, FIValue> variables_;
};

TEST(RandomWalks, agree_with_the_second_evaluator) {
    const std::map<std::string, FIValue> variables = {{"v", Text("a")}, {"n", FIValue::OfInt(1)}};
    const Evaluator evaluator(variables);
    const FIValue serial_name = Text("serial");
    int reached_count = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        Random random(seed);
        ScriptNode root("root");
        int serial = 0;
        Grow(root, random, 4, serial);
        for (int i = 0; i < 100; ++i) {
            const std::string path = RandomPath(random, 3);
            FIValue error;
            const ParsedPath step = ParsePath(Text(path), error);
            ASSERT_TRUE(error.IsNull()) << error.ToText();
            const ScriptNode* expected = evaluator.Walk(root, *step);

            const auto it = root.Iterate();
            for (const auto& [name, value] : variables) it->SetVarText(name.c_str(), value);
            const bool reached = it->WalkFrom(*step);
            ASSERT_EQ(expected != nullptr, reached) << path << ", seed " << seed;
            FIValue serial_reached;
            it->GetAttribute(serial_name, serial_reached);
            const ScriptNode& end = expected ? *expected : root;
            ASSERT_EQ(end.attributes[0].second.AsInt(), serial_reached.AsInt())
                << path << ", seed " << seed;
            ASSERT_TRUE(reached || it->Depth() == 0) << path << ", seed " << seed;
            reached_count += reached;
        }
    }
    // Both outcomes are frequent, or the test would say little.
    EXPECT_GT(reached_count, 3000);
    EXPECT_LT(reached_count, 27000);
}

}  // namespace

}  // namespace fixtop
