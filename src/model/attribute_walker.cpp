// SPDX-License-Identifier: Apache-2.0
#include "model/attribute_walker.h"

#include "diagnostics/module_log.h"
#include "model/class_library.h"
#include "xml/message_text.h"

namespace fixtop {

CCDMAttributeWalker::CCDMAttributeWalker(const CCDMClass& walked, const CCDMAttributeWalker* below)
    : class_(&walked), below_(below), superclass_(walked.superclasses.begin()) {}

CCDMAttributeWalker::CCDMAttributeWalker(const CCDMAttributeWalker& other,
                                         const CCDMAttributeWalker* below)
    : class_(other.class_), below_(below), superclass_(other.superclass_), index_(other.index_) {
    if (other.nested_) nested_.reset(new CCDMAttributeWalker(*other.nested_, this));
}

CCDMAttributeWalker& CCDMAttributeWalker::operator=(const CCDMAttributeWalker& other) {
    if (this == &other) return *this;
    class_ = other.class_;
    superclass_ = other.superclass_;
    index_ = other.index_;
    nested_.reset(other.nested_ ? new CCDMAttributeWalker(*other.nested_, this) : nullptr);
    return *this;
}

bool CCDMAttributeWalker::First() {
    superclass_ = class_->superclasses.begin();
    return EnterForward();
}

bool CCDMAttributeWalker::Next() {
    if (nested_) {
        if (nested_->Next()) return true;
        ++superclass_;
        return EnterForward();
    }
    if (index_ < 0) return First();
    const int size = static_cast<int>(class_->attributes.size());
    if (index_ < size) ++index_;
    return index_ < size;
}

bool CCDMAttributeWalker::Last() {
    nested_.reset();
    superclass_ = class_->superclasses.end();
    index_ = static_cast<int>(class_->attributes.size());
    return Prev();
}

bool CCDMAttributeWalker::Prev() {
    if (nested_) return (nested_->Prev() && PassOverRedefined()) || EnterBackward();
    if (index_ < 0) return false;
    if (index_ > 0) {
        --index_;
        return true;
    }
    superclass_ = class_->superclasses.end();
    return EnterBackward();
}

CCDMAttribute* CCDMAttributeWalker::Current() const {
    if (nested_) return nested_->Current();
    const bool standing = index_ >= 0 && index_ < static_cast<int>(class_->attributes.size());
    return standing ? class_->attributes[static_cast<std::size_t>(index_)] : nullptr;
}

// From the superclass reached on: the first one that has attributes, else the class's own.
bool CCDMAttributeWalker::EnterForward() {
    for (; superclass_ != class_->superclasses.end(); ++superclass_) {
        nested_ = WalkSuperclass(*superclass_);
        if (nested_ && nested_->First()) {
            index_ = -1;
            return true;
        }
    }
    nested_.reset();
    index_ = 0;
    return !class_->attributes.empty();
}

// From the superclass before the one reached, backward.
bool CCDMAttributeWalker::EnterBackward() {
    index_ = -1;
    while (superclass_ != class_->superclasses.begin()) {
        --superclass_;
        nested_ = WalkSuperclass(*superclass_);
        if (nested_ && nested_->Last() && PassOverRedefined()) return true;
    }
    nested_.reset();
    return false;
}

// One step further back when this class declares the attribute again; that one is not compared.
bool CCDMAttributeWalker::PassOverRedefined() {
    return class_->FindAttribute(nested_->Current()->name) == nullptr || nested_->Prev();
}

std::unique_ptr<CCDMAttributeWalker> CCDMAttributeWalker::WalkSuperclass(
    const std::string& name) const {
    const CCDMClass* superclass = class_->library->FindClass(name);
    const char* problem = superclass == nullptr     ? "SuperClass %s in class %s not found"
                          : IsOnTheWay(*superclass) ? "SuperClass %s in class %s is circular"
                                                    : nullptr;
    if (problem != nullptr) {
        LogMessage(MessageText(problem, name.c_str(), class_->name.c_str()).c_str());
        return nullptr;
    }
    return std::unique_ptr<CCDMAttributeWalker>(new CCDMAttributeWalker(*superclass, this));
}

bool CCDMAttributeWalker::IsOnTheWay(const CCDMClass& candidate) const {
    for (const CCDMAttributeWalker* walker = this; walker != nullptr; walker = walker->below_) {
        if (walker->class_ == &candidate) return true;
    }
    return false;
}

}  // namespace fixtop
