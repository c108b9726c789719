// SPDX-License-Identifier: Apache-2.0
#include "automation/node_object.h"

#include <string_view>

#include "automation/attribute.h"
#include "automation/attribute_iterator.h"
#include "automation/filled_collection.h"
#include "automation/member.h"
#include "fixtop/automation/v_node.h"

namespace fixtop {

namespace {

constexpr int kNameBuffer = 1024;

// Begins the type of a node of a class, which ends with a parenthesis.
constexpr std::string_view kObjectType = "Object(";

void ClassOfType(FIValue& type) {
    const std::string text = type.ToText();
    if (text.starts_with(kObjectType) && text.ends_with(')')) {
        type.SetText(text.substr(kObjectType.size(), text.size() - kObjectType.size() - 1));
    }
}

// As much as fits the buffer of a name.
void Cut(FIValue& text) {
    char buffer[kNameBuffer];
    text.CopyText(buffer, kNameBuffer);
    if (!text.IsNull()) text = FIValue(buffer);
}

}  // namespace

template <class Interface>
NodeObject<Interface>::NodeObject(Ref<FIIteratorBase> place, NodeMaker make_node)
    : HeldNode{std::move(place)}, make_node_(make_node) {}

template <class Interface>
void* NodeObject<Interface>::Find(const InterfaceId& id) {
    if (id == kHeldNodeId) return static_cast<HeldNode*>(this);
    if (id == IQSINode::kId) return static_cast<IQSINode*>(this);
    return AutomationObject<Interface>::Find(id);
}

template <class Interface>
HRESULT NodeObject<Interface>::GetChild(const char* path, IQSINode** child) {
    if (LacksText(child, path)) return kResultPointer;
    return HandOutObject(child, [&]() -> IQSINode* {
        Ref<FIIteratorBase> it = Copy();
        return it->SeekPath(FIValue(path)) ? make_node_(std::move(it)) : nullptr;
    });
}

template <class Interface>
HRESULT NodeObject<Interface>::GetChildren(IQSINodeIterator** children) {
    return HandOutObject(children, [&]() -> IQSINodeIterator* {
        Ref<FIIteratorBase> it = Copy();
        return it->DownFirst() ? new CQSINodeIterator(std::move(it), make_node_) : nullptr;
    });
}

template <class Interface>
HRESULT NodeObject<Interface>::GetAttribute(const char* name, IQSIAttribute** attribute) {
    if (LacksText(attribute, name)) return kResultPointer;
    return HandOutObject(attribute, [&] { return CQSIAttribute::Read(*iterator, name, iterator); });
}

template <class Interface>
HRESULT NodeObject<Interface>::GetAttributes(IQSIAttributeIterator** attributes) {
    return HandOutObject(attributes, [&]() -> IQSIAttributeIterator* {
        return new CQSIAttributeIterator(iterator);
    });
}

template <class Interface>
HRESULT NodeObject<Interface>::GetPath(char** path) {
    return HandOutText(path, [&](FIValue& out) { iterator->GetPath(out); });
}

template <class Interface>
HRESULT NodeObject<Interface>::GetParent(IQSINode** parent) {
    return HandOutObject(parent, [&] {
        Ref<FIIteratorBase> it = Copy();
        it->Up();
        return make_node_(std::move(it));
    });
}

template <class Interface>
HRESULT NodeObject<Interface>::NewCollection(IQSICollection** collection) {
    return HandOutObject(collection, [&] {
        return MakeFilledCollection([&](FICollectionBase& made) { return made.Add(*Copy()); });
    });
}

template <class Interface>
HRESULT NodeObject<Interface>::GetAltPath(const char* path, IQSICollection** collection) {
    if (LacksText(collection, path)) return kResultPointer;
    return HandOutObject(collection, [&] {
        return MakeFilledCollection(
            [&](FICollectionBase& made) { return made.AddMatches(*Copy(), FIValue(path)) >= 0; });
    });
}

template <class Interface>
HRESULT NodeObject<Interface>::GetDocument(void*, void** document) {
    if (!document) return kResultPointer;
    *document = nullptr;
    return RunMember([] { return kResultNoInterface; });
}

template <class Interface>
HRESULT NodeObject<Interface>::SetVariable(const char* name, const char* value) {
    if (!name || !value) return kResultPointer;
    return RunMember([&] {
        iterator->SetVar(FIValue(name), FIValue(value));
        return kResultOk;
    });
}

template <class Interface>
HRESULT NodeObject<Interface>::GetFullName(char** name) {
    return HandOutText(name, [&](FIValue& out) {
        iterator->GetPath(out);
        Cut(out);
    });
}

template <class Interface>
HRESULT NodeObject<Interface>::GetClassName(char** name) {
    return HandOutText(name, [&](FIValue& out) {
        iterator->GetAttribute(FIValue("type"), out);
        ClassOfType(out);
        Cut(out);
    });
}

template class NodeObject<IQSINode>;
template class NodeObject<IQSVNode>;

}  // namespace fixtop
