// SPDX-License-Identifier: Apache-2.0
// FIIterator: names, keys, paths and the table of variables as text.

#include "framework/iterator/iterator.h"

namespace fixtop {

namespace {

constexpr std::size_t kTabStop = 8;

using Lister = void (*)(FIIterator&, FIValue&);

void ReadName(FIIterator& it, FIValue& out) {
    it.GetName(out);
}
void ReadPath(FIIterator& it, FIValue& out) {
    it.GetPath(out);
}
void ReadKey(FIIterator& it, FIValue& out) {
    it.GetKeyText(it.Depth(), out);
}

void CopyText(FIIterator& it, Lister read, char* buffer, int size) {
    FIValue text;
    read(it, text);
    text.CopyText(buffer, size);
}

int TextLength(FIIterator& it, Lister read) {
    FIValue text;
    read(it, text);
    return text.Length();
}

void AppendVariable(int level, const VarMap::Variable& variable, FIValue& out) {
    const std::string name = variable.name.ToText();
    out.AppendInt(level);
    out.AppendChar('\t');
    out.AppendText(name.c_str());
    out.AppendText(name.size() >= kTabStop ? "\t" : "\t\t");
    out.AppendText(FIValue::KindName(variable.value.Kind()));
    out.AppendText("\t\"");
    out.AppendValue(variable.value);
    out.AppendText("\"\n");
}

// A number is quoted like a text: the point in 3.5 would end the step when the path is read back.
void AppendKey(const FIValue& key, FIValue& out) {
    FIValue text;
    if (key.Kind() == FIValue::kReal) text.AppendValue(key);
    out.AppendValue(text.IsNull() ? key : text, true);
}

}  // namespace

void FIIterator::NameText(char* buffer, int size) {
    CopyText(*this, ReadName, buffer, size);
}
int FIIterator::NameLength() {
    return TextLength(*this, ReadName);
}
void FIIterator::PathText(char* buffer, int size) {
    CopyText(*this, ReadPath, buffer, size);
}
int FIIterator::PathLength() {
    return TextLength(*this, ReadPath);
}
void FIIterator::KeyText(char* buffer, int size) {
    CopyText(*this, ReadKey, buffer, size);
}
int FIIterator::KeyLength() {
    return TextLength(*this, ReadKey);
}

void FIIterator::GetKeyText(int level, FIValue& out) {
    out.Clear();
    if (level < 0 || level > Depth()) return;
    static const FIValue value_name("value");
    const Ref<FIContext> context = Ref<FIContext>::Adopt(EntryAt(level)->GetContext());
    const Ref<FICursorBase> keys = Ref<FICursorBase>::Adopt(context->MakeCursor(kKeyCursor));
    for (bool stands = keys->Seek(kFromFirst, 0); stands; stands = keys->Seek(kFromPresent, 1)) {
        const Ref<FIEntry> key = Ref<FIEntry>::Adopt(keys->GetEntry());
        if (!key) break;
        FIValue value;
        key->GetAttribute(value_name, value);
        if (!out.IsNull()) out.AppendText(", ");
        AppendKey(value, out);
    }
}

void FIIterator::GetPath(FIValue& out) {
    GetPathFrom(0, out);
}

// Where a node is gone nobody knows its name, so there is no path either.
void FIIterator::GetPathFrom(int level, FIValue& out) {
    out.SetText("");
    FIValue part;
    for (int each = level; each <= Depth(); ++each) {
        if (IsGoneAt(each)) return out.Clear();
        EntryAt(each)->GetName(part);
        out.AppendValue(part, true);
        GetKeyText(each, part);
        if (!part.IsNull()) {
            out.AppendText("(");
            out.AppendValue(part);
            out.AppendText(")");
        }
        if (each < Depth()) out.AppendText(".");
    }
}

void FIIterator::DumpVars(FIValue& out) {
    out.SetText("Frame\tVariable\t\tType\tValue\n");
    for (int level = 0; level <= Depth(); ++level) SettleLate(level);
    for (int level = 0; level <= Depth(); ++level) {
        const FrameVars* vars = VarsAt(level);
        if (!vars) continue;
        for (const VarMap::Variable& variable : vars->map.Variables()) {
            const bool shadowed = FindVar(variable.name) != &variable.value;
            if (!shadowed) AppendVariable(level, variable, out);
        }
    }
}

}  // namespace fixtop
