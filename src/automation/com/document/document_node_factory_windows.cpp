// SPDX-License-Identifier: Apache-2.0
#include "automation/com/document/document_node_factory_windows.h"

#include "automation/com/document/document_node_windows.h"
#include "automation/member.h"
// The component services follow the base header.
#include <objbase.h>
#include <unknwn.h>

namespace fixtop {

namespace {

constexpr InterfaceId kNodeClass = {
    0xd41c7a93, 0x52be, 0x4f63, {0x8a, 0x0d, 0xe3, 0x96, 0x2b, 0x58, 0x71, 0xc4}};

// The same table as the system's IClassFactory.
struct FactoryMembers : IUnknown {
    static constexpr InterfaceId kId = {1, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};

    virtual HRESULT FIXTOP_MEMBER CreateInstance(IUnknown* outer, const InterfaceId& id,
                                                 void** out) = 0;
    virtual HRESULT FIXTOP_MEMBER LockServer(BOOL lock) = 0;

 protected:
    ~FactoryMembers() = default;
};

// There is one, as long as the module.
class Factory final : public FactoryMembers {
 public:
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId& id, void** out) override {
        if (!out) return kResultPointer;
        *out = id == IUnknown::kId || id == kId ? this : nullptr;
        return *out ? kResultOk : kResultNoInterface;
    }
    std::uint32_t FIXTOP_MEMBER AddRef() override { return 2; }
    std::uint32_t FIXTOP_MEMBER Release() override { return 1; }

    // A part is told to the object that it is a part of by nothing but its own IUnknown.
    HRESULT FIXTOP_MEMBER CreateInstance(IUnknown* outer, const InterfaceId& id,
                                         void** out) override {
        if (!out) return kResultPointer;
        *out = nullptr;
        if (outer && id != IUnknown::kId) return CLASS_E_NOAGGREGATION;
        return RunMember([&] {
            const auto made = Ref<DocumentNode>::Adopt(new DocumentNode(outer));
            return made->QueryInterface(id, out);
        });
    }
    HRESULT FIXTOP_MEMBER LockServer(BOOL) override { return kResultOk; }
};

class RegisteredClass {
 public:
    RegisteredClass() {
        static constinit Factory factory;
        result_ = CoRegisterClassObject(AsGuid(kNodeClass), reinterpret_cast<::IUnknown*>(&factory),
                                        CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
    }
    ~RegisteredClass() {
        if (SUCCEEDED(result_)) CoRevokeClassObject(cookie_);
    }
    RegisteredClass(const RegisteredClass&) = delete;
    RegisteredClass& operator=(const RegisteredClass&) = delete;
    HRESULT Result() const { return result_; }

 private:
    HRESULT result_ = kResultFail;
    DWORD cookie_ = 0;
};

}  // namespace

HRESULT CreateDocumentNode(IUnknown* outer, Ref<IUnknown>& made) {
    const RegisteredClass registered;
    if (FAILED(registered.Result())) return registered.Result();
    void* out = nullptr;
    const HRESULT result =
        CoCreateInstance(AsGuid(kNodeClass), reinterpret_cast<::IUnknown*>(outer),
                         CLSCTX_INPROC_SERVER, kUnknownId, &out);
    if (SUCCEEDED(result)) made = Ref<IUnknown>::Adopt(static_cast<IUnknown*>(out));
    return result;
}

}  // namespace fixtop
