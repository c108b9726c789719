// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/attribute_cursor.h"

#include <algorithm>
#include <cstring>
#include "framework/nodes/cursor.h"
#include "framework/nodes/shield.h"

namespace fixtop {

namespace {

using Names = std::vector<std::string>;

// A row of the second face that is listed under another name.
struct AlternateRow {
    const char* listed;
    const char* name;
};
constexpr AlternateRow kAlternates[] = {{"alt_value", "value"}, {"alt_uom", "uom"}};

// Clients ask for this spelling.
constexpr char kBrowserNameAsListed[] = "broswer_name";
constexpr char kBrowserName[] = "browser_name";

const AlternateRow* FindListed(const char* name) {
    for (const AlternateRow& row : kAlternates) {
        if (std::strcmp(row.listed, name) == 0) return &row;
    }
    return nullptr;
}

const AlternateRow* FindAlternate(const char* name) {
    for (const AlternateRow& row : kAlternates) {
        if (std::strcmp(row.name, name) == 0) return &row;
    }
    return nullptr;
}

bool Has(const Names& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

Names NamesOf(const AppFace& face) {
    Names names;
    if (!face.Node() || !face.Node()->Rebind()) return names;
    const auto source =
        Ref<FIAttributeSource>::Adopt(face.Node()->GetIterator()->GetAttributeSource());
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    FIValue name;
    for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
        cursor->GetKey(name);
        names.push_back(name.ToText());
    }
    return names;
}

Names ListNames(const CCDMClassEntry& entry) {
    const AppFaces& faces = entry.Faces();
    Names names;
    if (faces.IsEmpty()) {
        const auto& rows = CCDMClassEntry::Rows();
        for (std::size_t i = 0; i < CCDMClassEntry::kListedRows; ++i) names.push_back(rows[i].name);
        return names;
    }
    names = NamesOf(faces.primary);
    const Names second = NamesOf(faces.secondary);
    for (const std::string& name : second) {
        const AlternateRow* alternate = faces.IsSwapped() ? FindAlternate(name.c_str()) : nullptr;
        const bool is_shown = Has(names, name);
        if (!is_shown && (alternate || faces.IsSwapped())) {
            names.push_back(alternate ? alternate->listed : name);
        }
    }
    const Names& specified = faces.IsSwapped() ? names : second;
    for (const AlternateRow& row : kAlternates) {
        const std::string name = std::string("spec_") + row.name;
        if (faces.IsSplit() && Has(specified, row.name) && !Has(names, name)) names.push_back(name);
    }
    return names;
}

}  // namespace

CCDMAttrCursorBase* CCDMAttrCursorBase::Make(CCDMClassEntry& entry) {
    auto* cursor =
        new Shielded<CCDMAttrCursorBase>(entry, std::make_shared<const Names>(ListNames(entry)));
    cursor->AddRef();
    return cursor;
}

const void* CCDMAttrCursorBase::TypeId() const {
    static const char type_id = 0;
    return &type_id;
}

FIAttributeCursorBase* CCDMAttrCursorBase::Clone(bool deep) {
    CCDMAttrCursorBase* clone = this;
    if (deep) {
        clone = new Shielded<CCDMAttrCursorBase>(*entry_, names_);
        clone->row_ = row_;
        clone->lent_.Share(lent_);
    }
    clone->AddRef();
    return clone;
}

bool CCDMAttrCursorBase::Seek(int origin, int delta) {
    if (entry_->IsGone()) origin = kFromEnd;
    if (origin == kFromFirst) row_ = 0;
    if (origin == kFromEnd) row_ = names_->size();
    for (; delta > 0 && !AtEnd(); --delta) ++row_;
    for (; delta < 0 && !AtEnd() && !AtBegin(); ++delta) --row_;
    return !AtEnd() && delta == 0;
}

bool CCDMAttrCursorBase::Find(const char* name) {
    const auto found = std::find(names_->begin(), names_->end(), name);
    row_ = static_cast<std::size_t>(found - names_->begin());
    return !AtEnd();
}

bool CCDMAttrCursorBase::SeekName(int, const char* name) {
    if (entry_->IsGone()) return Seek(kFromEnd, 0);
    if (!name) name = "";
    const AlternateRow* alternate = entry_->Faces().IsSwapped() ? FindAlternate(name) : nullptr;
    return (alternate && Find(alternate->listed)) || Find(name);
}

bool CCDMAttrCursorBase::SeekValue(int origin, FIEntry& entry) {
    FIValue name;
    entry.GetName(name);
    return SeekName(origin, name.CStr());
}

int CCDMAttrCursorBase::Compare(FICursorPosition& other) {
    const int order = CompareKeys(*this, other);
    const bool is_gone =
        order != 0 && other.TypeId() == TypeId() &&
        (entry_->IsGone() || static_cast<CCDMAttrCursorBase&>(other).entry_->IsGone());
    return is_gone ? kNotComparable : order;
}

void CCDMAttrCursorBase::GetKey(FIValue& out) {
    if (AtEnd()) {
        out.Clear();
    } else {
        out.SetText((*names_)[row_]);
    }
}

// An alternate row is the second node's, whose value the entry itself answers with.
void CCDMAttrCursorBase::GetValue(FIValue& out) {
    if (AtEnd()) return out.Clear();
    const char* name = (*names_)[row_].c_str();
    if (const AlternateRow* alternate = FindListed(name)) name = alternate->name;
    if (std::strcmp(name, kBrowserNameAsListed) == 0) name = kBrowserName;
    entry_->GetAttribute(FIValue(name), out);
}

}  // namespace fixtop
