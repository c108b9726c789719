// SPDX-License-Identifier: Apache-2.0
#pragma once

// A scripted tree of entries for tests: nodes that are written down in the test, shared by as many
// parents as wanted, so that graphs with cycles can be made, and changed while entries stand on
// them. Keys of cursors are the names unless a node says otherwise.
//
//     ScriptNode root("Root");
//     ScriptNode& feed = root.Add("Feed");
//     feed.Set("type", "Stream");
//     Ref<FIIterator> it = root.Iterate();

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "framework/iterator/iterator.h"

namespace fixtop {

inline FIValue Text(const std::string& text) {
    FIValue value;
    value.SetText(text);
    return value;
}

class ScriptNode {
 public:
    struct Subscription {
        void* owner;
        int kind;
        FICallback callback;
    };

    explicit ScriptNode(const std::string& node_name) : name(Text(node_name)) {}
    ScriptNode(const ScriptNode&) = delete;
    ScriptNode& operator=(const ScriptNode&) = delete;

    ScriptNode& Add(const std::string& child_name);
    // A child that is owned elsewhere.
    void Link(ScriptNode& child) { children.push_back(&child); }
    void RemoveChild(const std::string& child_name);
    ScriptNode& Set(const std::string& attribute, const FIValue& value);
    ScriptNode& Set(const std::string& attribute, const char* text) {
        return Set(attribute, Text(text));
    }
    ScriptNode& Set(const std::string& attribute, int number) {
        return Set(attribute, FIValue::OfInt(number));
    }
    ScriptNode& Set(const std::string& attribute, double number) {
        return Set(attribute, FIValue::OfReal(number));
    }

    Ref<FIEntry> Entry();
    // An iterator at this node as the root.
    Ref<FIIterator> Iterate(bool history = false);
    Ref<FICursorBase> Children();
    // Calls those who subscribed to the kind.
    void Notify(int kind);

    FIValue name;
    // Key in the cursor, the name when NULL.
    FIValue key;
    std::vector<std::pair<std::string, FIValue>> attributes;
    std::vector<ScriptNode*> children;
    std::vector<ScriptNode*> keys;
    bool container = true;
    bool hidden_key = false;
    bool can_notify = false;
    bool can_hold = false;
    // Cursors at the end answer null instead of the shared empty entry.
    bool null_at_end = true;
    // Cursors answer false to a move from where they stand, though they do it.
    bool denies_moves = false;
    std::vector<Subscription> subscriptions;
    // Called when a subscription is given back.
    std::function<void(int kind)> on_unsubscribe;
    // Called by every read and by every write before it is answered.
    std::function<void(FIVarSet*, const std::string& attribute)> on_read;
    std::function<void(FIVarSet*, const std::string& attribute)> on_write;
    // Called when a cursor over the children is made.
    std::function<void()> on_children;
    // What was called, in order: "hold", "set value", "batch", ...
    std::vector<std::string> log;
    // Turns the beginning of a path in a host's notation into a key.
    std::function<void(const char* path, FIValue& out, const char** rest)> key_value;

 private:
    std::vector<std::unique_ptr<ScriptNode>> owned_;
};

}  // namespace fixtop
