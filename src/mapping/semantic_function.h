#pragma once

// The routines that maps name where a path can't say how an attribute is reached. A host or program
// offers a module with such routines; of this very module a map reaches those alone that are made
// for maps.

#include <string>

#include "platform/modules.h"
#include "value/fi_value.h"

class FIIteratorBase;

// Whether the node is there. With `move` the iterator stands on it afterwards, and anywhere below
// where it was when there is none; without, it stays.
using SemanticFunction = bool (*)(FIIteratorBase* it, int move);
// With index -1 the number of elements, of which the low eight bits count; the iterator stays. Else
// the way to one element: it may move the iterator down, set variables and name the subclass.
using SemanticArrayFunction = int (*)(FIIteratorBase* it, FIValue* subclass, int index);

// The module that is linked around this code, by the name that maps know it by.
inline constexpr char kOwnModule[] = "fixtop.dll";

// A module that a map may name: an offered one or this very one; null for any other. A file can't
// bring code into the process.
ModuleHandle FindLinkedModule(const std::string& name);

// The function that the text of an element names, all blanks in it left out; null for none.
void* FindSemanticFunction(ModuleHandle module, const std::string& name);

// The function that makes the top entry. Of this module only those of that kind.
void* FindTopNodeFunction(ModuleHandle module, const std::string& name);
