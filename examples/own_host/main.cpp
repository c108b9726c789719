// SPDX-License-Identifier: Apache-2.0
// The host of this program, seen through Fixtop: its streams, a store, and the store read back.

#include <fixtop/client.h>
#include <fixtop/fixtop.h>

#include <iostream>

#include "own_host.h"

int main() {
    own::Services simulator;
    simulator.Add("Feed", 25, 6000);
    simulator.Add("Product", -20, fixtop::host::kEmptyReal);
    fixtop::FixtopInstallHost(&simulator);
    {
        const auto plant = fixtop::client::Case::OfSession();
        for (const auto& stream : plant.Matches("appModel.FlowSheetObjects.Streams.*")) {
            std::cout << stream.Name() << ',' << stream.Type() << ','
                      << stream.At("Temperature").Text() << ',' << stream.At("Pressure").Text()
                      << '\n';
        }
        const auto feed = plant.At("appModel.FlowSheetObjects.Streams.Feed.Temperature");
        feed.Store(300, "K");
        std::cout << feed.Path() << " = " << feed.Number("C") << " C\n";
        // The text by which the host itself names it leads there, too.
        std::cout << plant.At("/FlowSht.1/StreamObject.400(Feed):Double.0").Path() << '\n';
        // The same stream of the neutral view, whose units are its own.
        std::cout << plant.Neutral().At("Flowsheet.Stream(Feed).Temperature").Number("K") << " K\n";
    }
    // After all that stands on its case, before the case.
    fixtop::FixtopInstallHost(nullptr);
}
