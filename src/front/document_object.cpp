// SPDX-License-Identifier: Apache-2.0
#include "front/document_object.h"

#include "automation/filled_collection.h"
#include "automation/member.h"
#include "front/documents.h"

namespace fixtop {

namespace {

void* MakeItems(host::SimulationCase*) {
    return MakeFilledCollection([](FICollectionBase&) { return true; });
}

void DropItems(void* collection) {
    static_cast<IQSICollection*>(collection)->Release();
}

// The message of a record, which there always is.
template <class Ask>
HRESULT HandOutRecord(char** error, Ask ask) {
    return HandOutMessage(error, [&](FIValue& out) {
        FIErrorRecord record;
        ask(record);
        out = record.text;
    });
}

HRESULT DoneOrFailed(bool done) {
    return done ? kResultOk : kResultFail;
}

}  // namespace

CQSIDocument::CQSIDocument(Ref<IQSINode> top, void* session, const void* identity, Documents& among)
    : top_(std::move(top)),
      document_(static_cast<host::SimulationCase*>(session), {MakeItems, DropItems}),
      identity_(identity),
      among_(among) {}

CQSIDocument::~CQSIDocument() {
    among_.Forget(*this);
}

bool CQSIDocument::IsOf(void* session, const void* identity) const {
    return identity == identity_ && document_.IsOf(static_cast<host::SimulationCase*>(session));
}

HRESULT CQSIDocument::GetName(char** name) {
    return HandOutText(name, [&](FIValue& out) { document_.DocumentName(out); });
}

HRESULT CQSIDocument::GetApplicationName(char** name) {
    return HandOutText(name, [&](FIValue& out) { document_.ApplicationName(out); });
}

HRESULT CQSIDocument::GetSessionText(char** text) {
    return HandOutText(text, [&](FIValue& out) { document_.SessionText(out); });
}

HRESULT CQSIDocument::CreateCollection(IQSICollection** collection) {
    return HandOutObject(collection, [&]() -> IQSICollection* {
        return HandOut(static_cast<IQSICollection*>(document_.CreateCollection()));
    });
}

HRESULT CQSIDocument::DropCollection() {
    return RunMember([&] {
        document_.DropCollection();
        return kResultOk;
    });
}

HRESULT CQSIDocument::Save() {
    return RunMember([&] { return DoneOrFailed(document_.Save()); });
}

HRESULT CQSIDocument::SaveAs(const char* path) {
    if (!path) return kResultPointer;
    return RunMember([&] { return DoneOrFailed(document_.SaveAs(path)); });
}

HRESULT CQSIDocument::ReadHistory(char** error) {
    return HandOutRecord(error, [&](FIErrorRecord& record) { document_.ReadHistory(record); });
}

HRESULT CQSIDocument::ClearHistory(char** error) {
    return HandOutRecord(error, [&](FIErrorRecord& record) { document_.ClearHistory(record); });
}

HRESULT CQSIDocument::GetTopNode(IQSINode** node) {
    return HandOutObject(node, [&] { return top_.Counted(); });
}

}  // namespace fixtop
