// SPDX-License-Identifier: Apache-2.0
// Nodes of the neutral view as typed objects of the system, on the built-in case: by names, as
// scripts call them, and by their places in the table.

#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <thread>
#include <utility>

#include "automation/objects.h"
#include "automation/other_thread.h"
#include "casehost/standard_host.h"
#include "front/open_module.h"
#include "support/temporary_folder.h"

// The system's headers come last: they rename functions of common names.
#include <windows.h>
// The component services follow the base header.
#include <objbase.h>
#include <oleauto.h>
#undef GetClassName

namespace fixtop {

namespace {

constexpr GUID kDispatch = {0x00020400, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr GUID kUnknown = {0, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr int kDispatchMembers = 7;

const GUID& AsGuid(const InterfaceId& id) {
    return reinterpret_cast<const GUID&>(id);
}

// Another interface of an object; null when it has none.
template <class T, class From>
Ref<T> As(From* object, const GUID& id) {
    void* out = nullptr;
    const HRESULT result = reinterpret_cast<::IUnknown*>(object)->QueryInterface(id, &out);
    EXPECT_EQ(result == kResultOk, out != nullptr);
    return Ref<T>::Adopt(static_cast<T*>(out));
}

template <class From>
Ref<IQSINode> AsNode(From* object) {
    return As<IQSINode>(object, AsGuid(IQSINode::kId));
}

std::string Plain(BSTR text) {
    std::string plain;
    for (UINT i = 0; i < SysStringLen(text); ++i) plain += static_cast<char>(text[i]);
    SysFreeString(text);
    return plain;
}

struct Member {
    std::string name;
    std::wstring wide;
    bool is_list = false;
    // What it answers, or has items, of a class of the model's own.
    bool has_face = false;
};

// The members of a type with its bases, the farthest first.
std::vector<Member> MembersOf(ITypeInfo& info) {
    std::vector<Member> members;
    TYPEATTR* facts = nullptr;
    EXPECT_EQ(S_OK, info.GetTypeAttr(&facts));
    const UINT count = facts->cFuncs;
    const bool is_dispatch = IsEqualGUID(facts->guid, kDispatch);
    info.ReleaseTypeAttr(facts);
    if (is_dispatch) return members;
    HREFTYPE base = 0;
    ITypeInfo* of_base = nullptr;
    EXPECT_EQ(S_OK, info.GetRefTypeOfImplType(0, &base));
    EXPECT_EQ(S_OK, info.GetRefTypeInfo(base, &of_base));
    members = MembersOf(*Ref<ITypeInfo>::Adopt(of_base));
    for (UINT i = 0; i < count; ++i) {
        FUNCDESC* function = nullptr;
        EXPECT_EQ(S_OK, info.GetFuncDesc(i, &function));
        BSTR name = nullptr, answered = nullptr;
        EXPECT_EQ(S_OK, info.GetDocumentation(function->memid, &name, nullptr, nullptr, nullptr));
        const TYPEDESC& type = function->lprgelemdescParam[0].tdesc;
        ITypeInfo* of_answer = nullptr;
        EXPECT_EQ(S_OK, info.GetRefTypeInfo(type.lptdesc->lptdesc->hreftype, &of_answer));
        const auto answer = Ref<ITypeInfo>::Adopt(of_answer);
        EXPECT_EQ(S_OK, answer->GetDocumentation(-1, &answered, nullptr, nullptr, nullptr));
        const std::wstring wide(name, SysStringLen(name));
        const std::string answers = Plain(answered);
        members.push_back(
            {Plain(name), wide, answers.ends_with("Array"), answers.starts_with("IQSI")});
        info.ReleaseFuncDesc(function);
    }
    return members;
}

Ref<ITypeInfo> TypeOf(IDispatch& object) {
    UINT count = 0;
    EXPECT_EQ(S_OK, object.GetTypeInfoCount(&count));
    EXPECT_EQ(1u, count);
    ITypeInfo* info = nullptr;
    EXPECT_EQ(S_OK, object.GetTypeInfo(0, 0, &info));
    return Ref<ITypeInfo>::Adopt(info);
}

std::string TypeName(IDispatch& object) {
    BSTR name = nullptr;
    EXPECT_EQ(S_OK, TypeOf(object)->GetDocumentation(-1, &name, nullptr, nullptr, nullptr));
    return Plain(name);
}

GUID IdOfType(ITypeLib& library, const wchar_t* name) {
    std::wstring sought = name;
    ITypeInfo* info = nullptr;
    MEMBERID member = 0;
    USHORT count = 1;
    EXPECT_EQ(S_OK, library.FindName(sought.data(), 0, &info, &member, &count));
    const auto held = Ref<ITypeInfo>::Adopt(info);
    TYPEATTR* facts = nullptr;
    EXPECT_EQ(S_OK, info->GetTypeAttr(&facts));
    const GUID id = facts->guid;
    info->ReleaseTypeAttr(facts);
    return id;
}

VARIANT Int(LONG number) {
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = VT_I4;
    V_I4(&value) = number;
    return value;
}

HRESULT NumberOf(IDispatch& object, const wchar_t* name, DISPID& number) {
    std::wstring written = name;
    LPOLESTR asked = written.data();
    return object.GetIDsOfNames(GUID{}, &asked, 1, LOCALE_USER_DEFAULT, &number);
}

// Calls a member by its name, as scripts do, with at most one argument.
HRESULT Call(IDispatch& object, const wchar_t* name, VARIANT& result, VARIANT* argument = nullptr) {
    VariantInit(&result);
    DISPID number = 0;
    const HRESULT found = NumberOf(object, name, number);
    if (found != S_OK) return found;
    DISPPARAMS arguments = {argument, nullptr, argument ? 1U : 0U, 0};
    return object.Invoke(number, GUID{}, LOCALE_USER_DEFAULT,
                         DISPATCH_METHOD | DISPATCH_PROPERTYGET, &arguments, &result, nullptr,
                         nullptr);
}

// The object that a member of this name answers, of whatever kind; null for none.
Ref<::IUnknown> Ask(IDispatch& object, const wchar_t* name, VARIANT* argument = nullptr) {
    VARIANT result;
    EXPECT_EQ(S_OK, Call(object, name, result, argument)) << Plain(SysAllocString(name));
    EXPECT_TRUE(V_VT(&result) == VT_DISPATCH || V_VT(&result) == VT_UNKNOWN) << V_VT(&result);
    return Ref<::IUnknown>::Adopt(V_UNKNOWN(&result));
}

Ref<IDispatch> AskDispatch(IDispatch& object, const wchar_t* name, VARIANT* argument = nullptr) {
    VARIANT result;
    EXPECT_EQ(S_OK, Call(object, name, result, argument)) << Plain(SysAllocString(name));
    EXPECT_EQ(VT_DISPATCH, V_VT(&result));
    return Ref<IDispatch>::Adopt(V_DISPATCH(&result));
}

// What the module writes to the debug output of the system, which raises it as an exception.
std::string g_written;

LONG CALLBACK TakeDebugText(EXCEPTION_POINTERS* raised) {
    constexpr DWORD kDebugText = 0x40010006;
    const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
    if (record.ExceptionCode != kDebugText) return EXCEPTION_CONTINUE_SEARCH;
    g_written += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    return EXCEPTION_CONTINUE_EXECUTION;
}

std::string Counts() {
    g_written.clear();
    void* const handler = AddVectoredExceptionHandler(1, TakeDebugText);
    QSIPrint(0);
    RemoveVectoredExceptionHandler(handler);
    return g_written;
}

class Facade : public NeutralModule {
 protected:
    void SetUp() override {
        ASSERT_EQ(S_OK, CoInitialize(nullptr));
        NeutralModule::SetUp();
        OpenNeutral("demo");
    }
    void TearDown() override {
        model_.Reset();
        library_.Reset();
        EXPECT_EQ("", LeftBehind());
        NeutralModule::TearDown();
        CoUninitialize();
    }
    void WriteTypes() {
        ASSERT_EQ(kResultOk, FixtopWriteTypeLibrary(nullptr, nullptr, 13, 2));
        void* library = nullptr;
        ASSERT_TRUE(GetCCDMLibrary(nullptr, 13, 2, &library));
        library_ = Ref<ITypeLib>::Adopt(static_cast<ITypeLib*>(library));
    }
    IQSINode& Model() {
        if (!model_) {
            const auto place = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(root_.Get(), false));
            model_ =
                Ref<IQSINode>::Adopt(static_cast<IQSINode*>(MakeQSINode(place.Get(), nullptr)));
        }
        return *model_;
    }
    Ref<IDispatch> Typed(const char* path) {
        return As<IDispatch>(ChildOf(Model(), path).Get(), kDispatch);
    }
    // The classes of which the module still counts objects.
    static std::string LeftBehind() {
        std::istringstream lines(Counts());
        std::string left;
        int classes = 0;
        for (std::string line; std::getline(lines, line); ++classes) {
            if (line.find(": count: 0, total: ") == std::string::npos) left += line + "\n";
        }
        EXPECT_EQ(6, classes);
        return left;
    }

    TemporaryFolder folder_;
    Ref<IQSINode> model_;
    Ref<ITypeLib> library_;
};

TEST_F(Facade, without_a_type_library_there_is_none) {
    const auto stream = ChildOf(Model(), "Flowsheet.Stream(Raw Gas)");
    EXPECT_FALSE(As<IDispatch>(stream.Get(), kDispatch));
    WriteTypes();
    EXPECT_TRUE(As<IDispatch>(stream.Get(), kDispatch)) << "it is asked for anew";
}

TEST_F(Facade, node_is_an_object_of_its_class) {
    WriteTypes();
    const auto stream = Typed("Flowsheet.Stream(Raw Gas)");
    ASSERT_TRUE(stream);
    EXPECT_EQ("IQSIMaterialStream", TypeName(*stream));
    const auto temperature = AsNode(Ask(*stream, L"Temperature").Get());
    ASSERT_TRUE(temperature);
    EXPECT_EQ("30", ReadOf(*temperature, "value"));
    EXPECT_EQ("C", ReadOf(*temperature, "uom"));
}

TEST_F(Facade, script_walks_from_the_top_to_a_value) {
    WriteTypes();
    const auto top = As<IDispatch>(&Model(), kDispatch);
    ASSERT_TRUE(top);
    const auto flowsheet = AskDispatch(*top, L"Flowsheet");
    EXPECT_EQ("IQSIFlowsheet", TypeName(*flowsheet));
    const auto streams = AskDispatch(*flowsheet, L"stream");
    EXPECT_EQ("IQSIMaterialStreamArray", TypeName(*streams))
        << "names are sought in any case of letters";
    VARIANT count;
    ASSERT_EQ(S_OK, Call(*streams, L"Count", count));
    EXPECT_EQ(VT_I4, V_VT(&count));
    EXPECT_EQ(static_cast<LONG>(NamesIn("Stream").size()), V_I4(&count));
    VARIANT index = Int(0);
    const auto first = AskDispatch(*streams, L"ItemAt", &index);
    EXPECT_EQ(PathOf(*ChildOf(Model(), "Flowsheet.Stream#0")), PathOf(*AsNode(first.Get())));
    // The index that is given to the list itself.
    const auto same = AskDispatch(*flowsheet, L"Stream", &index);
    EXPECT_EQ(PathOf(*AsNode(first.Get())), PathOf(*AsNode(same.Get())));
}

TEST_F(Facade, item_of_a_list_is_found_by_place_and_by_key) {
    WriteTypes();
    const auto streams = AskDispatch(*Typed("Flowsheet"), L"Stream");
    VARIANT key;
    V_VT(&key) = VT_BSTR;
    V_BSTR(&key) = SysAllocString(L"Raw Gas");
    const auto by_key = Ask(*streams, L"ItemAt", &key);
    ASSERT_TRUE(by_key);
    EXPECT_EQ(PathOf(*ChildOf(Model(), "Flowsheet.Stream(Raw Gas)")),
              PathOf(*AsNode(by_key.Get())));
    V_BSTR(&key)[0] = L'X';
    EXPECT_FALSE(Ask(*streams, L"ItemAt", &key)) << "there is none";
    VariantClear(&key);
    for (const LONG place : {-1L, 1000L}) {
        VARIANT index = Int(place);
        EXPECT_FALSE(Ask(*streams, L"ItemAt", &index)) << place;
    }
    VARIANT half;
    V_VT(&half) = VT_R8;
    V_R8(&half) = 1.0;
    EXPECT_TRUE(Ask(*streams, L"ItemAt", &half));
}

TEST_F(Facade, leaf_has_no_dispatch) {
    WriteTypes();
    const auto stream = Typed("Flowsheet.Stream(Raw Gas)");
    VARIANT result;
    ASSERT_EQ(S_OK, Call(*stream, L"Temperature", result));
    EXPECT_EQ(VT_UNKNOWN, V_VT(&result));
    EXPECT_FALSE(As<IDispatch>(V_UNKNOWN(&result), kDispatch));
    EXPECT_EQ(0u, V_UNKNOWN(&result)->Release());
    VARIANT index = Int(0);
    EXPECT_EQ(static_cast<HRESULT>(DISP_E_BADPARAMCOUNT),
              Call(*stream, L"Temperature", result, &index));
}

TEST_F(Facade, class_of_another_name_has_no_face) {
    WriteTypes();
    TYPEATTR* facts = nullptr;
    int others = 0;
    for (UINT i = 0; i < library_->GetTypeInfoCount(); ++i) {
        ITypeInfo* out = nullptr;
        ASSERT_EQ(S_OK, library_->GetTypeInfo(i, &out));
        const auto info = Ref<ITypeInfo>::Adopt(out);
        BSTR name = nullptr;
        ASSERT_EQ(S_OK, info->GetDocumentation(-1, &name, nullptr, nullptr, nullptr));
        if (Plain(name).starts_with("IQSI")) continue;
        ++others;
        ASSERT_EQ(S_OK, info->GetTypeAttr(&facts));
        EXPECT_FALSE(As<IDispatch>(&Model(), facts->guid));
        info->ReleaseTypeAttr(facts);
    }
    EXPECT_FALSE(
        As<IDispatch>(ChildOf(Model(), "Flowsheet.Stream#0.Temperature").Get(), kDispatch));
    RecordProperty("others", others);
}

TEST_F(Facade, bases_of_the_class_answer_as_far_as_they_go) {
    WriteTypes();
    const auto node = ChildOf(Model(), "Flowsheet.Stream(Raw Gas)");
    const GUID of_base = IdOfType(*library_, L"IQSIMaterialFlow");
    const GUID of_class = IdOfType(*library_, L"IQSIMaterialStream");
    const GUID of_other = IdOfType(*library_, L"IQSIHeatStream");
    EXPECT_FALSE(As<IDispatch>(node.Get(), of_other));
    const auto base = As<IDispatch>(node.Get(), of_base);
    const auto stream = As<IDispatch>(node.Get(), of_class);
    ASSERT_TRUE(base && stream);
    EXPECT_EQ("IQSIMaterialFlow", TypeName(*base));
    EXPECT_EQ("IQSIMaterialStream", TypeName(*stream));
    EXPECT_EQ(base.Get(), (As<IDispatch>(stream.Get(), of_base).Get()));
    EXPECT_EQ(stream.Get(), (As<IDispatch>(base.Get(), of_class).Get()));
    EXPECT_EQ(stream.Get(), (As<IDispatch>(node.Get(), kDispatch).Get()));
    DISPID number = 0;
    EXPECT_EQ(DISP_E_UNKNOWNNAME, NumberOf(*base, L"VaporFraction", number));
    EXPECT_EQ(S_OK, NumberOf(*stream, L"VaporFraction", number));
    // The members of the base come first in both.
    const std::vector<Member> of_both = MembersOf(*TypeOf(*base));
    const std::vector<Member> all = MembersOf(*TypeOf(*stream));
    ASSERT_LT(of_both.size(), all.size());
    for (std::size_t i = 0; i < of_both.size(); ++i) EXPECT_EQ(of_both[i].name, all[i].name);
}

TEST_F(Facade, is_the_node_itself) {
    WriteTypes();
    auto node = ChildOf(Model(), "Flowsheet.Stream(Raw Gas)");
    const auto stream = As<IDispatch>(node.Get(), kDispatch);
    EXPECT_EQ(static_cast<void*>(As<::IUnknown>(node.Get(), kUnknown).Get()),
              static_cast<void*>(As<::IUnknown>(stream.Get(), kUnknown).Get()));
    EXPECT_EQ(node.Get(), AsNode(stream.Get()).Get());
    EXPECT_EQ(2u, CountOf(*node)) << "one count for both";
    const std::string path = PathOf(*node);
    node.Reset();
    EXPECT_EQ(1u, CountOf(*stream));
    EXPECT_EQ(path, PathOf(*AsNode(stream.Get()))) << "the face holds the node";
    EXPECT_FALSE(As<IDispatch>(stream.Get(), GUID{1, 2, 3, {}})) << "no such interface";
}

TEST_F(Facade, list_is_an_object_of_its_own) {
    WriteTypes();
    auto flowsheet = Typed("Flowsheet");
    const auto streams = AskDispatch(*flowsheet, L"Stream");
    EXPECT_EQ(1u, CountOf(*streams));
    EXPECT_EQ(1u, CountOf(*flowsheet));
    flowsheet.Reset();
    VARIANT count;
    ASSERT_EQ(S_OK, Call(*streams, L"Count", count));
    EXPECT_LT(0, V_I4(&count)) << "it holds its place";
    const auto same = As<IDispatch>(streams.Get(), IdOfType(*library_, L"IQSIMaterialStreamArray"));
    EXPECT_EQ(streams.Get(), same.Get());
    EXPECT_FALSE(AsNode(streams.Get()));
}

TEST_F(Facade, node_of_a_face_is_added_to_a_collection) {
    WriteTypes();
    const auto stream = Typed("Flowsheet.Stream(Raw Gas)");
    const auto collection = Take<IQSICollection>(
        [&](IQSICollection** out) { return Model().GetAltPath("Flowsheet.Nope", out); });
    EXPECT_EQ(kResultOk, collection->AddNode(reinterpret_cast<IUnknown*>(stream.Get())));
    std::int32_t count = 0;
    double* values = nullptr;
    EXPECT_EQ(kResultOk, collection->GetValues(&count, &values));
    EXPECT_EQ(1, count);
    FreeAsClient(values);
}

TEST_F(Facade, member_beyond_those_of_the_interface_has_no_answer) {
    WriteTypes();
    const auto stream = Typed("Flowsheet.Stream(Raw Gas)");
    const auto count = static_cast<int>(MembersOf(*TypeOf(*stream)).size());
    ASSERT_LT(count, 100);
    for (const int number : {count, 99}) {
        void* out = NoPointer<void>();
        EXPECT_EQ(static_cast<HRESULT>(E_NOTIMPL),
                  CallSlot(stream.Get(), kDispatchMembers + number, &out));
        EXPECT_EQ(nullptr, out);
    }
    void** const nowhere = nullptr;
    EXPECT_EQ(kResultPointer, CallSlot(stream.Get(), kDispatchMembers, nowhere));
    VARIANT result;
    VariantInit(&result);
    DISPPARAMS none = {};
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, stream->Invoke(count + 1, GUID{}, 0, DISPATCH_PROPERTYGET,
                                                    &none, &result, nullptr, nullptr));
    ITypeInfo* info = nullptr;
    EXPECT_EQ(DISP_E_BADINDEX, stream->GetTypeInfo(1, 0, &info));
}

TEST_F(Facade, members_are_refused_on_another_thread) {
    WriteTypes();
    const auto flowsheet = Typed("Flowsheet");
    const auto streams = AskDispatch(*flowsheet, L"Stream");
    ExpectRefused(flowsheet.Get(), kDispatchMembers, kDispatchMembers + 99);
    ExpectRefused(streams.Get(), kDispatchMembers, kDispatchMembers + 1);
    for (IDispatch* const each : {flowsheet.Get(), streams.Get()}) {
        UINT count = 0;
        EXPECT_EQ(kResultWrongThread,
                  OnOtherThread([&] { return HRESULT{each->GetTypeInfoCount(&count)}; }));
        ITypeInfo* info = nullptr;
        EXPECT_EQ(kResultWrongThread,
                  OnOtherThread([&] { return HRESULT{each->GetTypeInfo(0, 0, &info)}; }));
        DISPID number = 0;
        EXPECT_EQ(kResultWrongThread,
                  OnOtherThread([&] { return HRESULT{NumberOf(*each, L"Count", number)}; }));
        VARIANT result;
        VariantInit(&result);
        DISPPARAMS none = {};
        EXPECT_EQ(kResultWrongThread, OnOtherThread([&] {
                      return HRESULT{each->Invoke(1, GUID{}, 0, DISPATCH_METHOD, &none, &result,
                                                  nullptr, nullptr)};
                  }));
        void* out = nullptr;
        EXPECT_EQ(kResultWrongThread,
                  OnOtherThread([&] { return HRESULT{each->QueryInterface(kDispatch, &out)}; }));
    }
}

// Another thread that has the object through the system, which carries the calls over to the thread
// of the objects while that takes its messages.
TEST_F(Facade, call_through_a_proxy_is_carried_to_the_thread_of_the_objects) {
    WriteTypes();
    const auto streams = AskDispatch(*Typed("Flowsheet"), L"Stream");
    IStream* packed = nullptr;
    ASSERT_EQ(S_OK, CoMarshalInterThreadInterfaceInStream(kDispatch, streams.Get(), &packed));
    std::atomic<bool> is_done{false};
    HRESULT read = -1;
    VARIANT count = Int(-1);
    const DWORD own_thread = GetCurrentThreadId();
    std::thread other([&] {
        CoInitialize(nullptr);
        void* out = nullptr;
        if (CoGetInterfaceAndReleaseStream(packed, kDispatch, &out) == S_OK) {
            const auto proxy = Ref<IDispatch>::Adopt(static_cast<IDispatch*>(out));
            EXPECT_NE(streams.Get(), proxy.Get());
            read = Call(*proxy, L"Count", count);
        }
        CoUninitialize();
        is_done = true;
        PostThreadMessageW(own_thread, WM_NULL, 0, 0);
    });
    while (!is_done) {
        MSG message;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    other.join();
    EXPECT_EQ(S_OK, read);
    EXPECT_EQ(static_cast<LONG>(NamesIn("Stream").size()), V_I4(&count));
}

// Goes through all typed objects below one and compares each member, asked by its name and called
// at its place, with the node to which the path leads.
class Comparison {
 public:
    explicit Comparison(int depth) : depth_(depth) {}

    void Compare(IDispatch& object, int depth) {
        const auto node = AsNode(&object);
        const std::vector<Member> members = MembersOf(*TypeOf(object));
        for (std::size_t i = 0; i < members.size(); ++i) {
            const Member& each = members[i];
            SCOPED_TRACE(each.name);
            if (!each.has_face && !each.is_list) {
                CompareFaceless(*node, object, each, static_cast<int>(i));
                continue;
            }
            void* by_place = nullptr;
            EXPECT_EQ(S_OK, CallSlot(&object, kDispatchMembers + static_cast<int>(i), &by_place));
            const auto held = Ref<::IUnknown>::Adopt(static_cast<::IUnknown*>(by_place));
            const auto by_name = Ask(object, each.wide.c_str());
            EXPECT_EQ(held.Get() == nullptr, by_name.Get() == nullptr);
            if (each.is_list) {
                CompareList(*node, each, *As<IDispatch>(by_name.Get(), kDispatch), depth);
            } else {
                CompareNode(*node, each.name, held.Get(), depth);
                CompareNode(*node, each.name, by_name.Get(), depth_);
            }
        }
    }

    int values = 0, missing = 0, objects = 0, lists = 0, faceless = 0;

 private:
    // What is there has not the interface that was asked for.
    void CompareFaceless(IQSINode& from, IDispatch& object, const Member& member, int place) {
        IQSINode* out = nullptr;
        const bool is_there = from.GetChild(member.name.c_str(), &out) == kResultOk;
        const auto held = Ref<IQSINode>::Adopt(out);
        void* answered = NoPointer<void>();
        EXPECT_EQ(is_there ? kResultNoInterface : kResultOk,
                  CallSlot(&object, kDispatchMembers + place, &answered));
        EXPECT_EQ(nullptr, answered);
        if (is_there) ++faceless;
    }
    void CompareNode(IQSINode& from, const std::string& path, ::IUnknown* found, int depth) {
        IQSINode* out = nullptr;
        const HRESULT result = from.GetChild(path.c_str(), &out);
        const auto expected = Ref<IQSINode>::Adopt(out);
        EXPECT_EQ(result == kResultOk, found != nullptr);
        if (!expected || !found) {
            ++missing;
            return;
        }
        const auto node = AsNode(found);
        EXPECT_EQ(PathOf(*expected), PathOf(*node));
        EXPECT_EQ(ReadOf(*expected, "value"), ReadOf(*node, "value"));
        const auto object = As<IDispatch>(found, kDispatch);
        object ? ++objects : ++values;
        if (object && depth < depth_) Compare(*object, depth + 1);
    }
    void CompareList(IQSINode& from, const Member& member, IDispatch& list, int depth) {
        ++lists;
        VARIANT count;
        ASSERT_EQ(S_OK, Call(list, L"Count", count));
        for (LONG i = 0; i < V_I4(&count); ++i) {
            VARIANT index = Int(i);
            if (!member.has_face) {
                VARIANT result;
                EXPECT_EQ(DISP_E_EXCEPTION, Call(list, L"ItemAt", result, &index));
                ++faceless;
                continue;
            }
            const auto item = Ask(list, L"ItemAt", &index);
            EXPECT_TRUE(item) << i;
            CompareNode(from, member.name + "#" + std::to_string(i), item.Get(), depth);
        }
        IQSINode* beyond = nullptr;
        const std::string next = member.name + "#" + std::to_string(V_I4(&count));
        EXPECT_EQ(kResultFalse, from.GetChild(next.c_str(), &beyond));
    }

    const int depth_;
};

TEST_F(Facade, all_members_of_a_case_lead_where_their_paths_lead) {
    WriteTypes();
    Comparison comparison(3);
    comparison.Compare(*As<IDispatch>(&Model(), kDispatch), 0);
    EXPECT_LT(1000, comparison.values);
    EXPECT_LT(100, comparison.objects);
    EXPECT_LT(100, comparison.lists);
    EXPECT_LT(0, comparison.missing);
    EXPECT_LT(0, comparison.faceless);
}

}  // namespace

}  // namespace fixtop
