// SPDX-License-Identifier: Apache-2.0
#include <fixtop/client.h>

#include <iostream>

int main(int, char** arguments) try {
    const auto plant = fixtop::client::Case::Open(arguments[1]);
    for (const auto& stream : plant.Matches("appModel.FlowSheetObjects.Streams.*")) {
        std::cout << stream.Name() << '\t' << stream.At("Temperature").Number("C") << '\t'
                  << stream.At("Pressure").Number("kPa") << '\t'
                  << stream.Neutral().value().At("Temperature").Number("K") << '\n';
    }
} catch (const fixtop::client::Error& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
