// SPDX-License-Identifier: Apache-2.0
// A client that survives deletion: it keeps a reference, which says when its object is gone.

#include <fixtop/client.h>
#include <fixtop/fixtop.h>

#include <iostream>

#include "own_host/own_host.h"

namespace {

void Show(const fixtop::client::Reference& reference) {
    if (reference.IsLive()) {
        std::cout << reference.Path() << " = " << reference.Read("C").value.ToText() << " C\n";
    } else {
        std::cout << "gone: " << reference.WhyGone() << '\n';
    }
}

}  // namespace

int main() {
    own::Services simulator;
    const own::Stream& first = simulator.Add("Product", 50, 500);
    fixtop::FixtopInstallHost(&simulator);
    {
        const auto plant = fixtop::client::Case::OfSession();
        const auto node = plant.At("appModel.FlowSheetObjects.Streams.Product.Temperature");
        const fixtop::client::Reference reference(node);
        Show(reference);

        simulator.Delete(first);
        // Another one of the same name is not the one that was meant.
        simulator.Add("Product", 70, 500);
        Show(reference);
        simulator.RunLoop();
        try {
            node.Number("C");
        } catch (const fixtop::client::Gone& gone) {
            std::cout << "read: " << gone.Text() << '\n';
        }
        Show(fixtop::client::Reference(
            plant.At("appModel.FlowSheetObjects.Streams.Product.Temperature")));
    }
    fixtop::FixtopInstallHost(nullptr);
}
