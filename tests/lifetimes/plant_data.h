// SPDX-License-Identifier: Apache-2.0
#pragma once

// The cases of the plant as data. Each generation has values of its own.

#include <string>

#include "casehost/case_data.h"

namespace fixtop::lifetimes {

casehost::ObjectData StreamData(const std::string& name, double number);
casehost::ObjectData OperationData(const std::string& name, int generation);
// A stream or an operation, by the first letter of its name.
casehost::ObjectData NewObjectData(const std::string& name, int generation);
casehost::CaseData PlantData(int generation, bool online);
// A case that stands open beside it.
casehost::CaseData OtherData(bool online);
// The number of a stream or published variable of the first generation by its name.
double NumberOf(const std::string& name);
// Its temperature and the second element of its profile.
double TemperatureOf(double number);
double ProfileOf(double number);
double FractionOf(double number);
inline constexpr double kTuned = 3000;

}  // namespace fixtop::lifetimes
