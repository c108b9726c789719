// SPDX-License-Identifier: Apache-2.0
#pragma once

// A specification under the control of a test: elements are added to `info` and listed or shown as
// nodes of the object `owner`.

#include <gtest/gtest.h>

#include <string>

#include "fixtop/host/array_set.h"
#include "host/specifications/spec_node.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

class Specification : public testing::Test {
 protected:
    Specification() : owner(host.main.Add("Feed", host.stream)) {}

    Ref<HSpecContext> List(const scripted::SpecInfo& of) {
        return Ref<HSpecContext>::Share(
            new HSpecContext(&of, &owner, {&options, attachments, nullptr}));
    }
    Ref<FIEntry> Node(host::CSpecElement& element) {
        return Ref<FIEntry>::Share(List(info)->MakeEntry(element));
    }
    host::CSpecElement& Variable(const char* tag, scripted::ProcessVariable& variable) {
        host::CSpecElement& element = info.Add(tag);
        element.process_variable = &variable;
        return element;
    }
    host::CSpecElement& Words(const char* tag, const char* text = "text") {
        host::CSpecElement& element = info.Add(tag);
        element.value_text = host::Text(text);
        return element;
    }
    // The attribute "id" of all that is listed.
    Names Ids(const scripted::SpecInfo& of) {
        Names ids;
        auto cursor = ChildrenOf(*List(of));
        for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
            ids.push_back(Read(*Ref<FIEntry>::Adopt(cursor->GetEntry()), "id"));
        }
        return ids;
    }
    std::string Store(FIEntry& entry, const FIValue& value, int mode) {
        FIValue out("left over");
        entry.SetAttribute(FIValue("value"), value, mode, out);
        return Shown(out);
    }

    scripted::Host host;
    scripted::Plain& owner;
    HovexOptions options{&host.simulation_case};
    bool attachments = true;
    scripted::SpecInfo info;
    scripted::SpecInfo child;
    host::ArraySetBlock block;
    int status_holder = 0;
};

}  // namespace fixtop
