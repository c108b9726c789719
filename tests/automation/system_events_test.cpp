// SPDX-License-Identifier: Apache-2.0
// Collections as the system's clients know them: sinks at their connection point, arrays of the
// system.

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "automation/objects.h"
#include "automation/other_thread.h"
#include "casehost/standard_host.h"
#include "front/open_module.h"

// The system's headers come last: they rename functions of common names.
#include <windows.h>
// The component services follow the base header.
#include <objbase.h>
#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>

// The system's interfaces end by their last Release and have no destructor.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace fixtop {

namespace {

constexpr char kTemperatures[] = "appModel.FlowSheetObjects.Streams.*.Temperature";

const GUID& AsGuid(const InterfaceId& id) {
    return reinterpret_cast<const GUID&>(id);
}

// What a sink was called with: "1 locale 400 flags 1: 3", or "null" for no place.
std::string Shown(DISPID number, REFIID id, LCID locale, WORD flags, const DISPPARAMS& arguments) {
    char text[80];
    std::snprintf(text, sizeof text, "%ld locale %lx flags %d%s:", number, locale, flags,
                  IsEqualGUID(id, GUID{}) ? "" : " with an id");
    std::string shown = text;
    for (UINT i = 0; i < arguments.cArgs; ++i) {
        const VARIANT& each = arguments.rgvarg[i];
        shown += V_VT(&each) == VT_I4     ? " " + std::to_string(V_I4(&each))
                 : V_VT(&each) == VT_NULL ? " null"
                                          : " type " + std::to_string(V_VT(&each));
    }
    return shown;
}

// A client's sink, which has the system's dispatch interface alone.
class Sink final : public IDispatch {
 public:
    ::HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        const bool has = IsEqualGUID(id, IID_IUnknown) || IsEqualGUID(id, IID_IDispatch);
        *out = has ? this : nullptr;
        if (has) AddRef();
        return has ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    ::HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    ::HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    ::HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    ::HRESULT STDMETHODCALLTYPE Invoke(DISPID number, REFIID id, LCID locale, WORD flags,
                                       DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                       UINT*) override {
        references_in_call = references;
        heard.push_back(Shown(number, id, locale, flags, *arguments));
        if (const auto call = on_call) call();
        return E_FAIL;
    }

    ULONG references = 1;
    ULONG references_in_call = 0;
    std::vector<std::string> heard;
    std::function<void()> on_call;
};

class SystemEventsOfModule : public HostedModule {
 protected:
    void SetUp() override {
        casehost::UseStandardParts(host_);
        ASSERT_TRUE(casehost::OpenCase(host_, "demo"));
        HostedModule::SetUp();
        top_node_ = Ref<IQSINode>::Adopt(static_cast<IQSINode*>(GetQSINode(nullptr, nullptr)));
        collection_ = Take<IQSICollection>(
            [&](IQSICollection** out) { return top_node_->GetAltPath(kTemperatures, out); });
    }
    void TearDown() override {
        point_.Reset();
        collection_.Reset();
        for (const Sink& each : sinks_) EXPECT_EQ(1u, each.references);
        top_node_.Reset();
        HostedModule::TearDown();
    }
    Ref<IConnectionPointContainer> Container() {
        void* out = nullptr;
        EXPECT_EQ(kResultOk,
                  collection_->QueryInterface(
                      reinterpret_cast<const InterfaceId&>(IID_IConnectionPointContainer), &out));
        return Ref<IConnectionPointContainer>::Adopt(static_cast<IConnectionPointContainer*>(out));
    }
    IConnectionPoint& Point() {
        if (!point_) {
            IConnectionPoint* out = nullptr;
            EXPECT_EQ(S_OK, Container()->FindConnectionPoint(AsGuid(IQSISink::kId), &out));
            point_ = Ref<IConnectionPoint>::Adopt(out);
        }
        return *point_;
    }
    DWORD Advise(Sink& sink) {
        DWORD cookie = 0;
        EXPECT_EQ(S_OK, Point().Advise(&sink, &cookie));
        EXPECT_NE(0u, cookie);
        return cookie;
    }
    // One change of the case that the host tells, if anybody listens.
    void Step() {
        host::IModelCallback* callback = host_.ActiveCase()->OnlineManager()->ModelCallback();
        if (callback) callback->SimulationStep();
    }

    // They outlive the collection that holds them.
    Sink sinks_[3];
    Ref<IQSINode> top_node_;
    Ref<IQSICollection> collection_;
    Ref<IConnectionPoint> point_;
};

TEST_F(SystemEventsOfModule, change_reaches_each_sink_once) {
    Sink &one = sinks_[0], &other = sinks_[1];
    Advise(one);
    const DWORD cookie = Advise(other);
    Step();
    std::int32_t count = 0;
    double* values = nullptr;
    ASSERT_EQ(kResultOk, collection_->GetValues(&count, &values));
    CoTaskMemFree(values);
    std::vector<std::string> expected;
    for (std::int32_t i = 0; i < count; ++i) {
        expected.push_back("1 locale 400 flags 1: " + std::to_string(i));
    }
    ASSERT_LT(1, count);
    EXPECT_EQ(expected, one.heard);
    EXPECT_EQ(expected, other.heard);
    EXPECT_LE(2u, one.references_in_call) << "it is held while it is called";
    EXPECT_EQ(S_OK, Point().Unadvise(cookie));
    EXPECT_EQ(1u, other.references);
    one.heard.clear();
    other.heard.clear();
    Step();
    EXPECT_FALSE(one.heard.empty());
    EXPECT_TRUE(other.heard.empty());
    point_.Reset();
    collection_.Reset();
    EXPECT_EQ(1u, one.references);
}

TEST_F(SystemEventsOfModule, sink_leaves_from_within_its_call) {
    Sink& sink = sinks_[0];
    const DWORD cookie = Advise(sink);
    sink.on_call = [&] {
        sink.on_call = nullptr;
        EXPECT_EQ(S_OK, Point().Unadvise(cookie));
        EXPECT_EQ(CONNECT_E_NOCONNECTION, Point().Unadvise(cookie));
    };
    Step();
    EXPECT_EQ(1u, sink.heard.size());
    EXPECT_EQ(1u, sink.references);
}

TEST_F(SystemEventsOfModule, container_is_the_collection) {
    const auto container = Container();
    void* out = nullptr;
    ASSERT_EQ(S_OK, container->QueryInterface(IID_IUnknown, &out));
    EXPECT_EQ(static_cast<void*>(collection_.Get()), out);
    static_cast<::IUnknown*>(out)->Release();
    EXPECT_EQ(2u, CountOf(*collection_));
    EXPECT_EQ(container.Get(), Container().Get());
    IConnectionPoint* point = nullptr;
    EXPECT_EQ(CONNECT_E_NOCONNECTION, container->FindConnectionPoint(IID_IDispatch, &point));
    EXPECT_EQ(nullptr, point);
    EXPECT_EQ(E_POINTER, container->FindConnectionPoint(AsGuid(IQSISink::kId), nullptr));
    IID id = {};
    EXPECT_EQ(S_OK, Point().GetConnectionInterface(&id));
    EXPECT_TRUE(IsEqualGUID(AsGuid(IQSISink::kId), id));
    IConnectionPointContainer* back = nullptr;
    ASSERT_EQ(S_OK, Point().GetConnectionPointContainer(&back));
    EXPECT_EQ(container.Get(), back);
    back->Release();
    EXPECT_EQ(E_NOINTERFACE, Point().QueryInterface(IID_IDispatch, &out));
}

TEST_F(SystemEventsOfModule, points_and_connections_are_walked) {
    IEnumConnectionPoints* out_points = nullptr;
    ASSERT_EQ(S_OK, Container()->EnumConnectionPoints(&out_points));
    const auto points = Ref<IEnumConnectionPoints>::Adopt(out_points);
    IConnectionPoint* point[2] = {};
    ULONG fetched = 99;
    EXPECT_EQ(S_FALSE, points->Next(2, point, &fetched));
    ASSERT_EQ(1u, fetched);
    IID id = {};
    EXPECT_EQ(S_OK, point[0]->GetConnectionInterface(&id));
    EXPECT_TRUE(IsEqualGUID(AsGuid(IQSISink::kId), id));
    EXPECT_EQ(0u, point[0]->Release() - 1) << "the walk holds it too";
    EXPECT_EQ(S_FALSE, points->Next(1, point, nullptr));
    EXPECT_EQ(S_OK, points->Reset());
    EXPECT_EQ(S_OK, points->Skip(1));
    EXPECT_EQ(S_FALSE, points->Skip(1));
    EXPECT_EQ(E_POINTER, points->Next(2, point, nullptr));

    DWORD cookies[3];
    for (int i = 0; i < 3; ++i) cookies[i] = Advise(sinks_[i]);
    IEnumConnections* out_walk = nullptr;
    ASSERT_EQ(S_OK, Point().EnumConnections(&out_walk));
    const auto walk = Ref<IEnumConnections>::Adopt(out_walk);
    CONNECTDATA rows[3] = {};
    EXPECT_EQ(S_OK, walk->Next(2, rows, &fetched));
    IEnumConnections* out_clone = nullptr;
    ASSERT_EQ(S_OK, walk->Clone(&out_clone));
    const auto clone = Ref<IEnumConnections>::Adopt(out_clone);
    EXPECT_EQ(S_OK, clone->Next(1, rows + 2, nullptr));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(static_cast<::IUnknown*>(&sinks_[i]), rows[i].pUnk) << i;
        EXPECT_EQ(cookies[i], rows[i].dwCookie) << i;
        rows[i].pUnk->Release();
    }
}

// An object without the dispatch interface.
class Mute final : public ::IUnknown {
 public:
    ::HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
};

TEST_F(SystemEventsOfModule, what_can_not_be_called_is_refused) {
    DWORD cookie = 99;
    Mute mute;
    EXPECT_EQ(CONNECT_E_CANNOTCONNECT, Point().Advise(&mute, &cookie));
    EXPECT_EQ(0u, cookie);
    EXPECT_EQ(E_POINTER, Point().Advise(nullptr, &cookie));
    EXPECT_EQ(E_POINTER, Point().Advise(&mute, nullptr));
    EXPECT_EQ(CONNECT_E_NOCONNECTION, Point().Unadvise(7));
    const auto own = Take<IQSIConnectionPoint>(
        [&](IQSIConnectionPoint** out) { return collection_->GetConnectionPoints(out); });
    Sink& sink = sinks_[0];
    const DWORD given = Advise(sink);
    EXPECT_EQ(kResultFalse, own->Unadvise(given + 1));
}

TEST_F(SystemEventsOfModule, members_are_refused_on_another_thread) {
    const auto container = Container();
    ExpectRefused(container.Get(), 3, 4);
    ExpectRefused(&Point(), 3, 7);
    IEnumConnectionPoints* points = nullptr;
    ASSERT_EQ(S_OK, container->EnumConnectionPoints(&points));
    ExpectRefused(points, 3, 6);
    points->Release();
}

TEST_F(SystemEventsOfModule, values_are_an_array_of_the_system) {
    VARIANT values;
    VariantInit(&values);
    ASSERT_EQ(kResultOk, CallSlot(collection_.Get(), 10, &values));
    ASSERT_EQ(VT_ARRAY | VT_R8, V_VT(&values));
    std::int32_t count = 0;
    double* expected = nullptr;
    ASSERT_EQ(kResultOk, collection_->GetValues(&count, &expected));
    LONG first = -1, last = -1;
    EXPECT_EQ(S_OK, SafeArrayGetLBound(V_ARRAY(&values), 1, &first));
    EXPECT_EQ(S_OK, SafeArrayGetUBound(V_ARRAY(&values), 1, &last));
    EXPECT_EQ(0, first);
    ASSERT_EQ(count - 1, last);
    for (LONG i = 0; i <= last; ++i) {
        double read = -1;
        EXPECT_EQ(S_OK, SafeArrayGetElement(V_ARRAY(&values), &i, &read));
        EXPECT_TRUE(read == expected[i] || (read != read && expected[i] != expected[i])) << i;
    }
    CoTaskMemFree(expected);
    EXPECT_EQ(S_OK, VariantClear(&values)) << "it is the system's to free";
}

}  // namespace

}  // namespace fixtop
