// SPDX-License-Identifier: Apache-2.0
// References and watches, over changes of the case.

#include <gtest/gtest.h>

#include "fixtop/client.h"

namespace fixtop::client {

namespace {

constexpr char kTemperature[] = "appModel.FlowSheetObjects.Streams.Raw Gas.Temperature";

TEST(ClientReference, follows_its_node) {
    const Case plant = Case::Open(Case::kDemo);
    const Reference temperature(plant.At(kTemperature));
    EXPECT_TRUE(temperature.IsLive());
    EXPECT_EQ("", temperature.WhyGone());
    EXPECT_EQ(kTemperature, temperature.Path());
    plant.At(kTemperature).Store(31, "C");
    EXPECT_EQ("31", temperature.Read().value.ToText());
    EXPECT_EQ("C", temperature.Attribute("uom").ToText());
}

TEST(ClientWatch, tells_what_changed_since_it_was_asked_last) {
    const Case plant = Case::Open(Case::kDemo);
    Watch watch;
    watch.Add(plant.At(kTemperature));
    EXPECT_TRUE(watch.Changes().empty());
    plant.At(kTemperature).Store(31, "C");
    const std::vector<Change> changes = watch.Changes();
    ASSERT_EQ(1u, changes.size());
    EXPECT_EQ(kTemperature, changes[0].path);
    EXPECT_EQ("30", changes[0].before.ToText());
    EXPECT_EQ("31", changes[0].now.ToText());
    EXPECT_EQ("C", changes[0].unit);
    EXPECT_TRUE(watch.Changes().empty());
}

}  // namespace

}  // namespace fixtop::client
