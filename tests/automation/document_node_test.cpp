// SPDX-License-Identifier: Apache-2.0
// Nodes inside documents of another program: parts of those by the system's rules of aggregation.

#include "automation/objects.h"
#include "automation/other_thread.h"
#include "automation/sibling_documents.h"
#include "casehost/standard_host.h"
#include "front/open_module.h"

namespace fixtop {

namespace {

constexpr char kTemperature[] = "appModel.FlowSheetObjects.Streams.Raw Gas.Temperature";

class NodeInDocument : public HostedModule {
 protected:
    void SetUp() override {
        ASSERT_EQ(S_OK, CoInitialize(nullptr));
        casehost::UseStandardParts(host_);
        ASSERT_TRUE(casehost::OpenCase(host_, "demo"));
        HostedModule::SetUp();
    }
    void TearDown() override {
        HostedModule::TearDown();
        EXPECT_EQ(1u, document_.references);
        CoUninitialize();
    }
    static Ref<IUnknown> Part(Document* outer, Document* document) {
        return Take<IUnknown>([&](IUnknown** out) {
            return FixtopMakeNodeInDocument(nullptr, outer ? outer->Unknown() : nullptr,
                                            document ? document->Unknown() : nullptr, out);
        });
    }
    static Ref<IQSINode> NodeOf(IUnknown& object) {
        return Take<IQSINode>([&](IQSINode** out) {
            return object.QueryInterface(IQSINode::kId, reinterpret_cast<void**>(out));
        });
    }

    Document document_{kSiblingClass, true};
    Document other_{kOtherClass, true};
};

TEST_F(NodeInDocument, node_counts_and_answers_for_the_document) {
    document_.part = Part(&document_, &document_);
    EXPECT_EQ(1u, document_.references) << "the part does not keep what it is a part of";
    {
        const auto node = NodeOf(*document_.Unknown());
        EXPECT_EQ(2u, document_.references);
        EXPECT_EQ(3u, node->AddRef());
        EXPECT_EQ(2u, node->Release());
        EXPECT_EQ("Top", PathOf(*node));
        EXPECT_EQ("30", ReadOf(*ChildOf(*node, kTemperature), "value"));
        void* identity = nullptr;
        ASSERT_EQ(kResultOk, node->QueryInterface(IUnknown::kId, &identity));
        EXPECT_EQ(static_cast<void*>(document_.Unknown()), identity);
        document_.Release();
        EXPECT_EQ(kResultNoInterface, Refused<IQSICollection>([&](IQSICollection** out) {
                      return node->QueryInterface(IQSICollection::kId,
                                                  reinterpret_cast<void**>(out));
                  }));
    }
    EXPECT_EQ(1u, document_.references);
    EXPECT_EQ(1u, CountOf(*document_.part));
    document_.part.Reset();
}

TEST_F(NodeInDocument, part_tells_its_own_identity) {
    const auto part = Part(&document_, nullptr);
    const auto again = Take<IUnknown>([&](IUnknown** out) {
        return part->QueryInterface(IUnknown::kId, reinterpret_cast<void**>(out));
    });
    EXPECT_EQ(part.Get(), again.Get());
    EXPECT_EQ(1u, document_.references);
    EXPECT_EQ(kResultNoInterface, Refused<IQSINodeIterator>([&](IQSINodeIterator** out) {
                  return part->QueryInterface(IQSINodeIterator::kId, reinterpret_cast<void**>(out));
              }));
    EXPECT_EQ(kResultPointer, part->QueryInterface(IUnknown::kId, nullptr));
}

// Also where the document knows nothing of the ids by which the objects know each other.
TEST_F(NodeInDocument, node_is_taken_by_other_objects) {
    document_.part = Part(&document_, nullptr);
    const auto node = NodeOf(*document_.part);
    const auto items =
        Take<IQSICollection>([&](IQSICollection** out) { return node->NewCollection(out); });
    const auto of_child = Take<IQSICollection>(
        [&](IQSICollection** out) { return ChildOf(*node, kTemperature)->NewCollection(out); });
    EXPECT_EQ(kResultOk, of_child->AddNode(node.Get()));
    const std::string text = TakeText([&](char** out) { return of_child->GetAsXml(out); });
    EXPECT_NE(std::string::npos, text.find("<Pathnode id=\"Top\" loc=\"")) << text;
    EXPECT_EQ(2u, document_.references);
    document_.part.Reset();
}

TEST_F(NodeInDocument, each_member_answers_as_a_node_at_the_top) {
    const auto part = Part(&document_, nullptr);
    const auto node = NodeOf(*part);
    const auto top = Ref<IQSINode>::Adopt(static_cast<IQSINode*>(GetQSINode(nullptr, nullptr)));
    EXPECT_EQ(PathOf(*top), PathOf(*node));
    const auto text = [](HRESULT result, char* given) {
        const std::string read = given ? given : "(null)";
        FreeAsClient(given);
        return std::to_string(result) + read;
    };
    for (const int slot : {7, 13, 14}) {
        char* of_top = nullptr;
        char* of_node = nullptr;
        const HRESULT expected = CallSlot(top.Get(), slot, &of_top);
        const HRESULT result = CallSlot(node.Get(), slot, &of_node);
        EXPECT_EQ(text(expected, of_top), text(result, of_node)) << slot;
    }
    EXPECT_EQ(ReadOf(*top, "type"), ReadOf(*node, "type"));
    EXPECT_EQ("Top", PathOf(*Take<IQSINode>([&](IQSINode** out) { return node->GetParent(out); })));
    Take<IQSINodeIterator>([&](IQSINodeIterator** out) { return node->GetChildren(out); });
    Take<IQSIAttributeIterator>(
        [&](IQSIAttributeIterator** out) { return node->GetAttributes(out); });
    Take<IQSICollection>([&](IQSICollection** out) { return node->GetAltPath(kTemperature, out); });
    EXPECT_EQ(kResultNoInterface,
              Refused<void>([&](void** out) { return node->GetDocument(this, out); }));
    EXPECT_EQ(kResultOk, node->SetVariable("where", "x"));
}

TEST_F(NodeInDocument, another_document_is_held_as_long_as_the_node) {
    auto part = Part(&document_, &other_);
    EXPECT_EQ(2u, other_.references);
    EXPECT_EQ(1u, document_.references);
    part.Reset();
    EXPECT_EQ(1u, other_.references);
}

TEST_F(NodeInDocument, without_a_document_it_is_an_object_of_its_own) {
    const auto part = Part(nullptr, &other_);
    const auto node = NodeOf(*part);
    EXPECT_EQ(2u, CountOf(*part));
    EXPECT_EQ("30", ReadOf(*ChildOf(*node, kTemperature), "value"));
}

TEST_F(NodeInDocument, sibling_shows_the_tree_as_the_host_does) {
    const RegisteredSibling registered;
    const auto of_sibling = Part(&document_, &document_);
    const auto of_other = Part(&document_, &other_);
    const auto sees = NodeOf(*of_sibling);
    EXPECT_EQ("Ready", ReadOf(*NodeOf(*of_other), "status")) << "of the case as a whole";
    EXPECT_NE("Ready", ReadOf(*sees, "status"));
    EXPECT_EQ("30", ReadOf(*ChildOf(*sees, kTemperature), "value"));
}

TEST_F(NodeInDocument, nothing_is_made_without_a_case_or_on_another_thread) {
    const auto refused = [&] {
        return Refused<IUnknown>([&](IUnknown** out) {
            return FixtopMakeNodeInDocument(nullptr, document_.Unknown(), document_.Unknown(), out);
        });
    };
    EXPECT_EQ(kResultPointer, FixtopMakeNodeInDocument(nullptr, nullptr, nullptr, nullptr));
    const auto top = Ref<IQSINode>::Adopt(static_cast<IQSINode*>(GetQSINode(nullptr, nullptr)));
    EXPECT_EQ(kResultWrongThread, OnOtherThread(refused));
    CoUninitialize();
    EXPECT_EQ(CO_E_NOTINITIALIZED, refused());
    ASSERT_EQ(S_OK, CoInitialize(nullptr));
    FixtopInstallHost(nullptr);
    EXPECT_EQ(kResultFalse, refused());
    EXPECT_EQ(1u, document_.references);
}

}  // namespace

}  // namespace fixtop
