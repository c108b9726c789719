#include "demo/demo_building.h"

#include "demo/demo_compounds.h"

namespace fixtop::casehost::demo {

namespace {

using Spec = std::shared_ptr<VariableSpec>;

Spec MakeSpec(const char* name, ValueKind kind, const char* quantity = "") {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = name;
    spec->kind = kind;
    spec->quantity = quantity;
    return spec;
}

DimensionData Counted(std::size_t count) {
    return {0, static_cast<int>(count), ElementNaming::number, {}};
}

VariableData TextArray(const char* name, ValueKind kind, std::vector<std::string> texts) {
    Spec spec = MakeSpec(name, kind);
    spec->dimensions = {Counted(texts.size())};
    VariableData variable{spec, {}};
    for (std::string& text : texts) {
        variable.values.push_back({kEmpty, std::move(text), VariableState::specified});
    }
    return variable;
}

}  // namespace

VariableData Given(const char* name, const char* quantity, double value) {
    return {MakeSpec(name, ValueKind::real, quantity), {{value, "", VariableState::specified}}};
}

VariableData Found(const char* name, const char* quantity) {
    return {MakeSpec(name, ValueKind::real, quantity), {{kEmpty, "", VariableState::calculated}}};
}

VariableData Words(const char* name, const char* text, ValueKind kind) {
    return {MakeSpec(name, kind), {{kEmpty, text, VariableState::specified}}};
}

VariableData Choice(const char* name, std::vector<std::string> options, int ordinal) {
    Spec spec = MakeSpec(name, ValueKind::enumeration);
    spec->options = std::move(options);
    return {spec, {{static_cast<double>(ordinal), "", VariableState::specified}}};
}

VariableData Link(const char* name, const char* path) {
    return Words(name, path, ValueKind::attachment);
}

VariableData Table(const char* name, const char* quantity, std::vector<DimensionData> dimensions,
                   VariableState state, std::vector<double> numbers) {
    Spec spec = MakeSpec(name, ValueKind::real, quantity);
    spec->dimensions = std::move(dimensions);
    numbers.resize(ElementCount(*spec), kEmpty);
    VariableData variable{spec, {}};
    for (double number : numbers) variable.values.push_back({number, "", state});
    return variable;
}

VariableData List(const char* name, const char* quantity, std::vector<double> numbers) {
    const std::size_t count = numbers.size();
    return Table(name, quantity, {Counted(count)}, VariableState::specified, std::move(numbers));
}

VariableData WordList(const char* name, std::vector<std::string> texts) {
    return TextArray(name, ValueKind::text, std::move(texts));
}

VariableData LinkList(const char* name, std::vector<std::string> paths) {
    return TextArray(name, ValueKind::attachment, std::move(paths));
}

DimensionData ByCompound() {
    DimensionData dimension;
    dimension.naming = ElementNaming::text;
    for (const CompoundData& compound : Compounds()) dimension.labels.push_back(compound.name);
    dimension.count = static_cast<int>(dimension.labels.size());
    return dimension;
}

ObjectData Make(const char* name, const char* type, std::vector<VariableData> variables,
                std::vector<PortData> ports) {
    ObjectData object;
    object.name = name;
    object.type = type;
    object.variables = std::move(variables);
    object.ports = std::move(ports);
    object.status = ObjectStatus::not_solved;
    return object;
}

ObjectData Aside(const char* name, const char* type, std::vector<VariableData> variables) {
    ObjectData object = Make(name, type, std::move(variables));
    object.status = ObjectStatus::ok;
    return object;
}

}  // namespace fixtop::casehost::demo
