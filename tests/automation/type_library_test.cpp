// SPDX-License-Identifier: Apache-2.0
// The type library of the shipped classes, read back by the system.

#include "automation/com/type_library.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include "automation/typed/type_id.h"
#include "fixtop/automation/node.h"
#include "fixtop/ref.h"
#include "support/temporary_folder.h"

// The system's headers come last: they rename functions of common names.
#include <windows.h>
// The component services follow the base header.
#include <oleauto.h>

namespace fixtop {

namespace {

using Kind = TypedMember::Kind;

std::wstring Wide(const std::string& text) {
    return {text.begin(), text.end()};
}

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

std::string NameOf(ITypeInfo& info, MEMBERID id = MEMBERID_NIL, std::string* help = nullptr) {
    BSTR name = nullptr, text = nullptr;
    EXPECT_EQ(S_OK, info.GetDocumentation(id, &name, &text, nullptr, nullptr)) << id;
    const std::string read_help = Plain(text);
    if (help) *help = read_help;
    return Plain(name);
}

Ref<ITypeInfo> Referred(ITypeInfo& info, HREFTYPE reference) {
    return Got<ITypeInfo>([&](ITypeInfo** out) { return info.GetRefTypeInfo(reference, out); });
}

// A type as text: "IQSIStream", "IQSIStream*", "long**".
std::string Shown(ITypeInfo& info, const TYPEDESC& type) {
    switch (type.vt) {
        case VT_PTR:
            return Shown(info, *type.lptdesc) + "*";
        case VT_USERDEFINED:
            return NameOf(*Referred(info, type.hreftype));
        case VT_I4:
            return "long";
        case VT_VARIANT:
            return "VARIANT";
        default:
            return "type " + std::to_string(type.vt);
    }
}

// A function of an interface: "3 get Temperature(out IQSINode** pOut) at 72".
std::string ShownFunction(ITypeInfo& info, UINT place) {
    FUNCDESC* function = nullptr;
    EXPECT_EQ(S_OK, info.GetFuncDesc(place, &function));
    BSTR names[4] = {};
    UINT count = 0;
    EXPECT_EQ(S_OK, info.GetNames(function->memid, names, 4, &count));
    std::string shown = std::to_string(function->memid);
    shown += function->invkind == INVOKE_PROPERTYGET ? " get "
             : function->invkind == INVOKE_FUNC      ? " call "
                                                     : " other ";
    shown += Plain(names[0]) + "(";
    for (int i = 0; i < function->cParams; ++i) {
        const ELEMDESC& parameter = function->lprgelemdescParam[i];
        if (i > 0) shown += ", ";
        if (parameter.paramdesc.wParamFlags & PARAMFLAG_FOUT) shown += "out ";
        if (parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) shown += "retval ";
        shown += Shown(info, parameter.tdesc);
        const UINT at = static_cast<UINT>(i) + 1;
        if (at < count) shown += " " + Plain(names[at]);
    }
    shown += ") at " + std::to_string(function->oVft);
    EXPECT_EQ(VT_HRESULT, function->elemdescFunc.tdesc.vt);
    EXPECT_EQ(FUNC_PUREVIRTUAL, function->funckind);
    info.ReleaseFuncDesc(function);
    return shown;
}

struct Facts {
    InterfaceId id{};
    int kind = -1;
    int functions = 0;
    int flags = 0;
    std::string base;
};

Facts FactsOf(ITypeInfo& info) {
    TYPEATTR* read = nullptr;
    EXPECT_EQ(S_OK, info.GetTypeAttr(&read));
    Facts facts{reinterpret_cast<const InterfaceId&>(read->guid), read->typekind, read->cFuncs,
                read->wTypeFlags, ""};
    const bool has_base = read->cImplTypes == 1;
    info.ReleaseTypeAttr(read);
    HREFTYPE reference = 0;
    if (has_base && SUCCEEDED(info.GetRefTypeOfImplType(0, &reference))) {
        facts.base = NameOf(*Referred(info, reference));
    }
    return facts;
}

constexpr int kMembersOfDispatch = 7;

std::string ExpectedResult(const TypedMember& member) {
    switch (member.kind) {
        case Kind::kObject:
            return "I" + member.type_name;
        case Kind::kArray:
            return "I" + member.type_name + "Array";
        default:
            return "IQSINode";
    }
}

class TypeLibraryTest : public testing::Test {
 protected:
    void SetUp() override { ASSERT_EQ(S_OK, CoInitialize(nullptr)); }
    void TearDown() override { CoUninitialize(); }
    static Ref<ITypeLib> Load(const std::string& file) {
        return Got<ITypeLib>([&](ITypeLib** out) { return LoadTypeLib(Wide(file).c_str(), out); });
    }
    // Written beside no other, and read back.
    Ref<ITypeLib> WriteAndLoad(const MemberTable& table) {
        const std::string file =
            TypeLibraryFile((folder_.Path() / "x").string().c_str(), kModelMajor, kModelMinor);
        EXPECT_EQ(kResultOk, WriteTypeLibrary(table, file, kModelMajor, kModelMinor));
        return Load(file);
    }
    static std::map<std::string, Ref<ITypeInfo>> Types(ITypeLib& library) {
        std::map<std::string, Ref<ITypeInfo>> types;
        for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
            auto info =
                Got<ITypeInfo>([&](ITypeInfo** out) { return library.GetTypeInfo(i, out); });
            const std::string name = NameOf(*info);
            EXPECT_TRUE(types.emplace(name, std::move(info)).second) << name;
        }
        return types;
    }

    TemporaryFolder folder_;
};

class ShippedTypes : public TypeLibraryTest {
 protected:
    void SetUp() override {
        TypeLibraryTest::SetUp();
        ASSERT_TRUE(classes_.ReadClassFile("QSIAllLibraries.xml"));
        table_.emplace(classes_);
        library_ = WriteAndLoad(*table_);
        ASSERT_TRUE(library_);
    }
    void TearDown() override {
        library_.Reset();
        TypeLibraryTest::TearDown();
    }

    CCDMClassLibrary classes_{LoadModule("fixtop.dll")};
    std::optional<MemberTable> table_;
    Ref<ITypeLib> library_;
};

TEST_F(TypeLibraryTest, base_is_an_interface_without_members_of_its_own) {
    const Ref<ITypeLib> library = Load("qsicom.dll");
    ASSERT_TRUE(library);
    auto types = Types(*library);
    ASSERT_EQ(1u, types.size());
    ITypeInfo& node = *types["IQSINode"];
    const Facts facts = FactsOf(node);
    EXPECT_EQ(IQSINode::kId, facts.id);
    EXPECT_EQ(TKIND_INTERFACE, facts.kind);
    EXPECT_EQ(0, facts.functions);
    EXPECT_EQ("IDispatch", facts.base);
}

TEST_F(TypeLibraryTest, file_has_name_and_version) {
    EXPECT_EQ("qsiccdm_13_2.tlb", TypeLibraryFile(nullptr, 13, 2));
    EXPECT_EQ("qsiccdm_1_0.tlb", TypeLibraryFile("", 1, 0));
    EXPECT_EQ("c:\\a\\other_2_10.tlb", TypeLibraryFile("c:\\a\\other", 2, 10));
}

TEST_F(TypeLibraryTest, what_is_no_library_is_not_loaded) {
    folder_.Write("broken_1_0.tlb", "this is none");
    EXPECT_EQ(nullptr, LoadTypeLibrary((folder_.Path() / "broken_1_0.tlb").string()));
    EXPECT_EQ(nullptr, LoadTypeLibrary("nowhere_1_0.tlb"));
    EXPECT_EQ(kResultFail, WriteTypeLibrary(MemberTable(CCDMClassLibrary()),
                                            (folder_.Path() / "no" / "x.tlb").string(), 1, 0));
}

TEST_F(ShippedTypes, library_has_name_help_and_version) {
    BSTR name = nullptr, help = nullptr;
    ASSERT_EQ(S_OK, library_->GetDocumentation(-1, &name, &help, nullptr, nullptr));
    EXPECT_EQ("CCDMLib", Plain(name));
    EXPECT_EQ("QSI-CCDM object types", Plain(help));
    TLIBATTR* facts = nullptr;
    ASSERT_EQ(S_OK, library_->GetLibAttr(&facts));
    EXPECT_EQ(13, facts->wMajorVerNum);
    EXPECT_EQ(2, facts->wMinorVerNum);
    EXPECT_EQ(SYS_WIN64, facts->syskind);
    library_->ReleaseTLibAttr(facts);
}

TEST_F(ShippedTypes, every_class_has_its_interface_and_one_for_lists) {
    std::set<std::string> expected;
    for (const auto& [name, record] : classes_.classes) {
        expected.insert("I" + name);
        expected.insert("I" + name + "Array");
    }
    EXPECT_EQ(186u, classes_.classes.size());
    std::set<std::string> read;
    for (const auto& [name, info] : Types(*library_)) read.insert(name);
    EXPECT_EQ(expected, read);
}

TEST_F(ShippedTypes, interfaces_stand_behind_their_bases) {
    std::set<std::string> before = {"IQSINode", "IDispatch"};
    for (UINT i = 0; i < library_->GetTypeInfoCount(); ++i) {
        const auto info =
            Got<ITypeInfo>([&](ITypeInfo** out) { return library_->GetTypeInfo(i, out); });
        const std::string name = NameOf(*info);
        EXPECT_TRUE(before.contains(FactsOf(*info).base)) << name;
        before.insert(name);
    }
}

TEST_F(ShippedTypes, members_have_the_numbers_of_the_table) {
    auto types = Types(*library_);
    int members = 0;
    for (const TypedInterface* each : table_->Interfaces()) {
        SCOPED_TRACE(each->name);
        ITypeInfo& info = *types[each->name];
        std::string help;
        EXPECT_EQ(each->name, NameOf(info, MEMBERID_NIL, &help));
        EXPECT_EQ(each->name + " Interface", help);
        const Facts facts = FactsOf(info);
        EXPECT_EQ(TKIND_INTERFACE, facts.kind);
        EXPECT_EQ(IdOfType(each->name, 13, 2), facts.id);
        EXPECT_EQ(TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE, facts.flags);
        EXPECT_EQ(each->base ? each->base->name : "IQSINode", facts.base);
        ASSERT_EQ(static_cast<int>(each->members.size()), facts.functions);
        EXPECT_LE(each->Count(), 100);
        for (UINT i = 0; i < each->members.size(); ++i) {
            const TypedMember& member = each->members[i];
            const int number = each->first_number + static_cast<int>(i);
            EXPECT_EQ(std::to_string(number + 1) + " get " + member.name + "(out retval " +
                          ExpectedResult(member) + "** pOut) at " +
                          std::to_string(8 * (kMembersOfDispatch + number)),
                      ShownFunction(info, i));
            ++members;
        }
    }
    EXPECT_EQ(1624, members);
}

TEST_F(ShippedTypes, lists_have_a_count_and_items) {
    auto types = Types(*library_);
    for (const TypedInterface* each : table_->Interfaces()) {
        SCOPED_TRACE(each->ArrayName());
        ITypeInfo& info = *types[each->ArrayName()];
        std::string help;
        NameOf(info, MEMBERID_NIL, &help);
        EXPECT_EQ(each->ArrayName() + " Interface", help);
        const Facts facts = FactsOf(info);
        EXPECT_EQ("IDispatch", facts.base);
        EXPECT_EQ(IdOfType(each->ArrayName(), 13, 2), facts.id);
        ASSERT_EQ(2, facts.functions);
        EXPECT_EQ("1 call Count(out retval long* pNumber) at 56", ShownFunction(info, 0));
        EXPECT_EQ("0 call ItemAt(VARIANT Index, out retval " + each->name + "** pOut) at 64",
                  ShownFunction(info, 1));
    }
}

TEST_F(ShippedTypes, libraries_of_one_program_have_ids_of_their_own_and_the_same_interfaces) {
    const auto id_of = [](ITypeLib& library) {
        TLIBATTR* facts = nullptr;
        EXPECT_EQ(S_OK, library.GetLibAttr(&facts));
        const InterfaceId id = reinterpret_cast<const InterfaceId&>(facts->guid);
        library.ReleaseTLibAttr(facts);
        return id;
    };
    const std::string file = (folder_.Path() / "second.tlb").string();
    ASSERT_EQ(kResultOk, WriteTypeLibrary(*table_, file, 13, 2));
    const Ref<ITypeLib> second = Load(file);
    const InterfaceId one = id_of(*library_), other = id_of(*second);
    EXPECT_EQ(one.data1 + 1, other.data1);
    EXPECT_EQ(FactsOf(*Types(*library_)["IQSIMaterialStream"]).id,
              FactsOf(*Types(*second)["IQSIMaterialStream"]).id);
}

}  // namespace

}  // namespace fixtop
