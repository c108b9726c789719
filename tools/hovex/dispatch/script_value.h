// SPDX-License-Identifier: Apache-2.0
#pragma once

// ScriptValue: a VARIANT that owns what it leads to, and how values of the tree become one.

#include <windows.h>
// The component services follow the base header.
#include <oleauto.h>

#include <string>
#include <vector>

#include "fixtop/value.h"

namespace fixtop::hovex {

class ScriptValue {
 public:
    ScriptValue() { VariantInit(&held_); }
    // Takes over what it leads to.
    explicit ScriptValue(const VARIANT& taken) : held_(taken) {}
    ScriptValue(ScriptValue&& other) noexcept : held_(other.Release()) {}
    ScriptValue& operator=(ScriptValue&& other) noexcept;
    ScriptValue(const ScriptValue&) = delete;
    ScriptValue& operator=(const ScriptValue&) = delete;
    ~ScriptValue() { VariantClear(&held_); }

    // Null for a value that is NULL.
    static ScriptValue Of(const FIValue& value);
    static ScriptValue Of(const std::string& text);
    static ScriptValue Of(bool truth);
    static ScriptValue Of(int number);
    static ScriptValue Of(double number);
    // Takes over the one reference; a null pointer is Nothing.
    static ScriptValue Object(IDispatch* object);
    // Of elements that are counted from 0.
    static ScriptValue Array(std::vector<ScriptValue> elements);
    static ScriptValue Array(const std::vector<std::string>& texts);

    const VARIANT& Get() const { return held_; }
    // A copy that is the caller's to clear. Throws CallError.
    VARIANT Copy() const;
    // The caller's to clear.
    VARIANT Release() noexcept;

 private:
    VARIANT held_;
};

// A value that a script gives: a plain copy of what a reference leads to. Throws CallError.
ScriptValue PlainCopy(const VARIANT& given);
// Empty, Null or left out: no value.
bool IsNothing(const VARIANT& plain);
// An argument that the caller left out among others.
bool IsLeftOut(const VARIANT& plain);
bool IsText(const VARIANT& plain);
std::string TextOf(const VARIANT& plain);
// Of a number; throws CallError for anything else, texts as well.
double NumberOf(const VARIANT& plain);
int IntegerOf(const VARIANT& plain);
// Of a truth, or of a number that is not 0; throws CallError for anything else.
bool TruthOf(const VARIANT& plain);
// The elements of an array with one dimension; throws CallError.
std::vector<ScriptValue> ElementsOf(const VARIANT& plain);
// As it is stored: NULL for no value. Texts are the caller's to look at.
FIValue ValueOf(const VARIANT& plain);

}  // namespace fixtop::hovex
