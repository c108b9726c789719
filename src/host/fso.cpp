#include "host/fso.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "host/h_top_entry.h"
#include "host/host_access.h"

HFSOContext::HFSOContext(host::FlowSheet* flowsheet, host::SimulationCase* simulation_case,
                         Kind kind, const HovexOptions* options, bool attachments, FIEntry* parent)
    : case_(CaseOrActive(simulation_case)),
      flowsheet_(FlowSheetOrMain(flowsheet, case_)),
      kind_(kind),
      options_(options),
      attachments_(attachments),
      parent_(Ref<FIEntry>::Share(parent)) {}

FICursorBase* HFSOContext::MakeCursor(int kind) {
    if (kind == kKeyCursor) return EmptyCursor();
    return HandOut(NewCursor());
}

FICursorBase* HFSOContext::NewCursor() {
    switch (kind_) {
        case kUtilities:
            return new HUtilCursorBase(this, MakeWalk());
        case kDataTables:
            return new HDataTableCursorBase(this, MakeWalk());
        case kReactions:
            return new HReactionCursorBase(this);
        default:
            return new HFSOCursorBase(this, MakeWalk());
    }
}

ObjectWalk HFSOContext::MakeWalk() const {
    using Part = ObjectWalk::Part;
    const host::LinkedList* objects = flowsheet_ ? flowsheet_->Objects().List() : nullptr;
    switch (kind_) {
        case kStreams:
            return ObjectWalk(Part(objects, ObjectFilter(ObjectFilter::kStreams)));
        case kUnitOps:
            return ObjectWalk(Part(objects, ObjectFilter(ObjectFilter::kUnitOps)));
        case kUtilities:
            return ObjectWalk(Part(objects, ObjectFilter(ObjectFilter::kNeither)),
                              Part(case_ ? case_->CaseUtilities() : nullptr));
        default:
            return ObjectWalk(Part(case_ ? case_->ProcessDataTables() : nullptr));
    }
}

host::ReactionPackageManager* HFSOContext::Reactions() const {
    host::BasisManager* basis = case_ ? case_->Basis() : nullptr;
    return basis ? basis->ReactionPackages() : nullptr;
}

FIEntry* HFSOContext::MakeEntry(host::Viewable& object) {
    return new HTopEntry(this, &object);
}

void HFSOContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    out.Clear();
    *rest = path;
    if (!path) return;
    const bool in_parentheses = *path == '(';
    const char* text = in_parentheses ? path + 1 : path;
    auto cursor = Ref<FICursorBase>::Adopt(MakeCursor(kChildCursor));
    FIValue key;
    for (bool found = cursor->Seek(kFromFirst, 0); found; found = cursor->Seek(kFromPresent, 1)) {
        cursor->GetKey(key);
        const std::size_t length = std::strlen(key.CStr());
        if (std::strncmp(text, key.CStr(), length) != 0) continue;
        const char* behind = text + length;
        if (in_parentheses && *behind == ')') ++behind;
        if (*behind != ':' && *behind != '/') continue;
        out = key;
        *rest = behind + 1;
        auto entry = Ref<FIEntry>::Adopt(cursor->GetEntry());
        if ((kind_ == kStreams || kind_ == kUnitOps) &&
            InnerFlowSheet(static_cast<HTopEntry*>(entry.Get())->Object())) {
            // What follows names the inner flowsheet, which has no level of its own.
            const char* slash = std::strchr(*rest, '/');
            if (slash) *rest = slash + 1;
        }
        return;
    }
}

HReactionCursorBase::HReactionCursorBase(HFSOContext* context, int position)
    : context_(Ref<HFSOContext>::Share(context)), position_(position) {}

const void* HReactionCursorBase::TypeId() const {
    static const char type_id = 0;
    return &type_id;
}

FICursorBase* HReactionCursorBase::Clone(bool deep) {
    FICursorBase* clone = deep ? new HReactionCursorBase(context_.Get(), position_) : this;
    return HandOut(clone);
}

int HReactionCursorBase::Count() const {
    host::ReactionPackageManager* reactions = context_->Reactions();
    return reactions ? reactions->ReactionCount() : 0;
}

host::Reaction* HReactionCursorBase::Current() const {
    host::ReactionPackageManager* reactions = context_->Reactions();
    return reactions ? reactions->RxnNumber(position_) : nullptr;
}

bool HReactionCursorBase::Seek(int origin, int delta) {
    if (origin == kFromFirst) position_ = 0;
    if (origin == kFromEnd) position_ = Count();
    const long long wanted = static_cast<long long>(position_) + delta;
    position_ = static_cast<int>(std::clamp<long long>(wanted, INT_MIN, INT_MAX));
    return Current() != nullptr;
}

bool HReactionCursorBase::SeekName(int origin, const char* name) {
    if (origin != kFromPresent) position_ = 0;
    for (const int count = Count(); name && position_ < count; ++position_) {
        host::Reaction* reaction = Current();
        if (reaction && reaction->GetName() == name) return true;
    }
    return false;
}

int HReactionCursorBase::Compare(FICursorPosition& other) {
    if (other.TypeId() != TypeId()) return kNotComparable;
    auto& same = static_cast<HReactionCursorBase&>(other);
    if (context_->Reactions() != same.context_->Reactions()) return kNotComparable;
    return (position_ > same.position_) - (position_ < same.position_);
}

void HReactionCursorBase::GetKey(FIValue& out) {
    out.Clear();
    if (host::Reaction* reaction = Current()) out.SetText(reaction->GetName().CStr());
}

FIEntry* HReactionCursorBase::GetEntry() {
    host::Reaction* reaction = Current();
    FIEntry* entry = reaction ? context_->MakeEntry(*reaction) : EmptyEntry();
    return HandOut(entry);
}
