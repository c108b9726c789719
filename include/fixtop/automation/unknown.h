// SPDX-License-Identifier: Apache-2.0
#pragma once

// What all automation interfaces begin with: three members, in the order and with the calling
// convention of the component objects of the system, result codes and ids.
//
// Objects are counted and end by the last Release: no interface has a destructor among its members.
// An object that a member hands out carries one reference for the caller.
// Errors: every member answers a result code and throws nothing. Where the result is not
// kResultOk, what is handed out is null, and a number 0, unless the member says otherwise. A null
// pointer where a member writes, or reads a text, gives kResultPointer.
// Texts are UTF-8 and end with NUL. What is handed out in task memory is the caller's to free: with
// CoTaskMemFree on Windows, elsewhere with free.
// Threads: the one that runs the simulation, which made the first of the objects that are alive. On
// any other each member does nothing and answers kResultWrongThread, but for AddRef and Release; an
// object whose last reference is let go of there ends when a member is next called on its own.

#include <cstdint>

// The layout of these interfaces is that of the system's, which has a convention of its own.
#if defined(_WIN32)
#define FIXTOP_MEMBER __stdcall
#else
#define FIXTOP_MEMBER
#endif

namespace fixtop::inline FI {

using HRESULT = std::int32_t;

inline constexpr HRESULT kResultOk = 0;
// There is no such thing; no error.
inline constexpr HRESULT kResultFalse = 1;
// A movement was refused.
inline constexpr HRESULT kResultFail = static_cast<HRESULT>(0x80004005);
inline constexpr HRESULT kResultNoInterface = static_cast<HRESULT>(0x80004002);
inline constexpr HRESULT kResultPointer = static_cast<HRESULT>(0x80004003);
inline constexpr HRESULT kResultOutOfMemory = static_cast<HRESULT>(0x8007000E);
// The object belongs to another thread.
inline constexpr HRESULT kResultWrongThread = static_cast<HRESULT>(0x8001010E);
// The system has no such thing.
inline constexpr HRESULT kResultNotImplemented = static_cast<HRESULT>(0x80004001);

// Sixteen bytes, laid out as the system lays out its ids.
struct InterfaceId {
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::uint8_t data4[8];
    bool operator==(const InterfaceId&) const = default;
};

struct IUnknown {
    static constexpr InterfaceId kId = {0, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};

    // The interface of this id, counted; kResultNoInterface and null when the object has none.
    virtual HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId& id, void** out) = 0;
    // Both answer the new count.
    virtual std::uint32_t FIXTOP_MEMBER AddRef() = 0;
    virtual std::uint32_t FIXTOP_MEMBER Release() = 0;

 protected:
    ~IUnknown() = default;
};

}  // namespace fixtop::inline FI
