// SPDX-License-Identifier: Apache-2.0
#pragma once

// The contract of a unit adapter: a module of its own that knows quantities, their units and how
// values convert. It exports, as plain functions,
//
//   CCDMUnitSource* CreateUnitSource();             // null when there is no memory
//   void DeleteUnitSource(CCDMUnitSource* source);  // takes what the other gave
//
// and may export
//
//   // Why Init answered false, with file and line where there are some; lent until Destroy, empty
//   // when there is nothing to say.
//   const char* UnitSourceProblem(CCDMUnitSource* source);
//
// The order of the operations is fixed, since both sides are built apart. Texts are UTF-8 and
// belong to the source until Destroy. Nothing throws; what fails for lack of memory leaves ENOMEM
// in errno.

namespace fixtop {

class CCDMUnitSource {
 public:
    // Once, before everything else; the text tells the source where its definitions are. After a
    // false only UnitSourceProblem and Destroy may be called.
    virtual bool Init(const char* init_string) = 0;
    // Drops the definitions; the object itself goes with DeleteUnitSource.
    virtual void Destroy() = 0;
    // Numbers of valid quantities and units are above 0; -1 when the name is not known.
    virtual int QuantityId(const char* name) = 0;
    // The unit of a quantity; with quantity 0 the first unit of that name.
    virtual int UnitId(const char* name, int quantity) = 0;
    // The quantity that a unit belongs to; -1 for none. The model never asks.
    virtual int QuantityOfUnit(int unit) = 0;
    // Empty for a number that is not valid.
    virtual const char* QuantityName(int quantity) = 0;
    virtual const char* UnitName(int unit) = 0;
    // Units of different kinds, and numbers that are not valid, leave the value as it is.
    virtual double Convert(double value, int from_unit, int to_unit) = 0;

 protected:
    ~CCDMUnitSource() = default;
};

using CreateUnitSourceFunction = CCDMUnitSource* (*)();
using DeleteUnitSourceFunction = void (*)(CCDMUnitSource*);
using UnitSourceProblemFunction = const char* (*)(CCDMUnitSource*);

}  // namespace fixtop
