// SPDX-License-Identifier: Apache-2.0
// The header of the typed interfaces: its tables as a compiler lays them out, beside the type
// library as the system reads it, and objects of the module called by them.

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <utility>

#include "automation/objects.h"
#include "front/open_module.h"
#include "support/temporary_folder.h"

// The system's interfaces end by their last Release and have no destructor.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// The system's headers come last: they rename functions of common names.
#include <windows.h>
// The component services follow the base header.
#include <objbase.h>
#include <oleauto.h>

#include "fixtop/automation/classes.h"

#undef GetClassName

namespace fixtop {

namespace {

namespace typed = interfaces;

constexpr int kDispatchMembers = 7;

// ---- The place of a member, told by the object that is called ----

// A table of members of which each answers its own place.
template <int... kPlaces>
constexpr auto TableOf(std::integer_sequence<int, kPlaces...>) {
    using Entry = ::HRESULT(STDMETHODCALLTYPE*)();
    return std::array<Entry, sizeof...(kPlaces)>{
        []() STDMETHODCALLTYPE -> ::HRESULT { return kPlaces; }...};
}

class Places {
 public:
    template <class Interface>
    Interface& As() {
        return *reinterpret_cast<Interface*>(&table_);
    }

 private:
    static constexpr auto kTable = TableOf(std::make_integer_sequence<int, 128>());
    const void* table_ = kTable.data();
};

template <class Interface, class Of, class... Arguments>
int PlaceOf(::HRESULT (STDMETHODCALLTYPE Of::*member)(Arguments...)) {
    Places places;
    return (places.As<Interface>().*member)(Arguments{}...);
}

struct Declared {
    std::string base;
    GUID id{};
    // By their places.
    std::map<int, std::string> members;
};

// As the header has them.
std::map<std::string, Declared> DeclaredInterfaces() {
    std::map<std::string, Declared> all;
#define TYPED_INTERFACE(name, its_base) all[#name] = {#its_base, typed::name::kId, {}};
#define TYPED_MEMBER(of, name) all[#of].members[PlaceOf<typed::of>(&typed::of::name)] = #name;
#include "class_interfaces.inc"
#undef TYPED_INTERFACE
#undef TYPED_MEMBER
    return all;
}

// ---- The library ----

std::string Plain(BSTR text) {
    std::string plain;
    for (UINT i = 0; i < SysStringLen(text); ++i) plain += static_cast<char>(text[i]);
    SysFreeString(text);
    return plain;
}

template <class T, class Call>
Ref<T> Got(Call call) {
    T* out = nullptr;
    EXPECT_EQ(S_OK, call(&out));
    return Ref<T>::Adopt(out);
}

std::string NameOf(ITypeInfo& info, MEMBERID id = MEMBERID_NIL) {
    BSTR name = nullptr;
    EXPECT_EQ(S_OK, info.GetDocumentation(id, &name, nullptr, nullptr, nullptr));
    return Plain(name);
}

std::string BaseOf(ITypeInfo& info) {
    HREFTYPE reference = 0;
    EXPECT_EQ(S_OK, info.GetRefTypeOfImplType(0, &reference));
    const std::string name = NameOf(
        *Got<ITypeInfo>([&](ITypeInfo** out) { return info.GetRefTypeInfo(reference, out); }));
    // It has no members of its own beyond those.
    return name == "IQSINode" ? "IDispatch" : name;
}

Declared InLibrary(ITypeInfo& info) {
    TYPEATTR* facts = nullptr;
    EXPECT_EQ(S_OK, info.GetTypeAttr(&facts));
    Declared read{BaseOf(info), facts->guid, {}};
    for (UINT i = 0; i < facts->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        EXPECT_EQ(S_OK, info.GetFuncDesc(i, &function));
        read.members[function->oVft / static_cast<int>(sizeof(void*))] =
            NameOf(info, function->memid);
        info.ReleaseFuncDesc(function);
    }
    info.ReleaseTypeAttr(facts);
    return read;
}

class ClassInterfaces : public NeutralModule {
 protected:
    void SetUp() override {
        ASSERT_EQ(S_OK, CoInitialize(nullptr));
        NeutralModule::SetUp();
        OpenNeutral("demo");
        ASSERT_EQ(kResultOk, FixtopWriteTypeLibrary(nullptr, nullptr, 13, 2));
    }
    void TearDown() override {
        NeutralModule::TearDown();
        CoUninitialize();
    }
    Ref<IQSINode> Model() {
        const auto place = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(root_.Get(), false));
        return Ref<IQSINode>::Adopt(static_cast<IQSINode*>(MakeQSINode(place.Get(), nullptr)));
    }
    template <class T>
    static const GUID& IdOf() {
        if constexpr (std::is_same_v<T, ::IDispatch>)
            return IID_IDispatch;
        else
            return T::kId;
    }
    template <class T, class From>
    static Ref<T> As(From& object) {
        void* out = nullptr;
        EXPECT_EQ(S_OK, reinterpret_cast<::IUnknown&>(object).QueryInterface(IdOf<T>(), &out));
        return Ref<T>::Adopt(static_cast<T*>(out));
    }
    static VARIANT Index(LONG place) {
        VARIANT index;
        VariantInit(&index);
        V_VT(&index) = VT_I4;
        V_I4(&index) = place;
        return index;
    }

    const TemporaryFolder folder_;
};

TEST_F(ClassInterfaces, header_lays_out_what_the_library_describes) {
    const std::map<std::string, Declared> declared = DeclaredInterfaces();
    const auto library = Got<ITypeLib>([](ITypeLib** out) {
        return GetCCDMLibrary(nullptr, 13, 2, reinterpret_cast<void**>(out)) ? S_OK : E_FAIL;
    });
    ASSERT_TRUE(library);
    ASSERT_EQ(declared.size(), library->GetTypeInfoCount());
    ASSERT_GT(declared.size(), 300u);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        const auto info =
            Got<ITypeInfo>([&](ITypeInfo** out) { return library->GetTypeInfo(i, out); });
        const std::string name = NameOf(*info);
        SCOPED_TRACE(name);
        const auto found = declared.find(name);
        ASSERT_NE(declared.end(), found);
        const Declared read = InLibrary(*info);
        EXPECT_EQ(read.base, found->second.base);
        EXPECT_TRUE(IsEqualGUID(read.id, found->second.id));
        EXPECT_EQ(read.members, found->second.members);
    }
}

TEST_F(ClassInterfaces, client_walks_to_a_value_by_the_tables) {
    const auto simulation = As<typed::IQSISimulation>(*Model());
    const auto flowsheet =
        Got<typed::IQSIFlowsheet>([&](auto** out) { return simulation->Flowsheet(out); });
    const auto streams =
        Got<typed::IQSIMaterialStreamArray>([&](auto** out) { return flowsheet->Stream(out); });
    LONG count = 0;
    EXPECT_EQ(S_OK, streams->Count(&count));
    ASSERT_GT(count, 10);
    std::map<std::string, std::string> temperatures;
    for (LONG place = 0; place < count; ++place) {
        const auto stream = Got<typed::IQSIMaterialStream>(
            [&](auto** out) { return streams->ItemAt(Index(place), out); });
        const auto name = Got<IQSINode>([&](auto** out) { return stream->Name(out); });
        const auto temperature =
            Got<IQSINode>([&](auto** out) { return stream->Temperature(out); });
        temperatures[ReadOf(*name, "value")] = ReadOf(*temperature, "value");
        EXPECT_EQ("C", ReadOf(*temperature, "uom"));
    }
    EXPECT_EQ(static_cast<std::size_t>(count), temperatures.size());
    EXPECT_EQ("30", temperatures["Raw Gas"]);
    typed::IQSIMaterialStream* beyond = NoPointer<typed::IQSIMaterialStream>();
    streams->ItemAt(Index(count), &beyond);
    EXPECT_EQ(nullptr, beyond);
}

TEST_F(ClassInterfaces, interfaces_of_an_object_have_one_identity_and_count) {
    const auto node = ChildOf(*Model(), "Flowsheet.Stream(Raw Gas)");
    const auto material = As<typed::IQSIMaterialStream>(*node);
    const auto flow = As<typed::IQSIMaterialFlow>(*material);
    const auto dispatch = As<::IDispatch>(*flow);
    const auto identity = [](auto& object) {
        void* out = nullptr;
        EXPECT_EQ(S_OK, reinterpret_cast<::IUnknown&>(object).QueryInterface(IID_IUnknown, &out));
        static_cast<::IUnknown*>(out)->Release();
        return out;
    };
    EXPECT_EQ(identity(*material), identity(*flow));
    EXPECT_EQ(identity(*node), identity(*dispatch));
    EXPECT_EQ(4u, CountOf(*node));
    void* other = NoPointer<void>();
    EXPECT_EQ(E_NOINTERFACE, material->QueryInterface(typed::IQSIFlowsheet::kId, &other));
    EXPECT_EQ(nullptr, other);
}

}  // namespace

}  // namespace fixtop
