// SPDX-License-Identifier: Apache-2.0
// Streams and compressors by the classes of the neutral view: usage: typed <case>

#include <fixtop/client.h>
#include <fixtop/client/classes.h>

#include <iostream>

int main(int count, char** arguments) try {
    using namespace fixtop::client::classes;
    if (count != 2) {
        std::cerr << "usage: typed <case>\n";
        return 2;
    }
    const auto plant = fixtop::client::Case::Open(arguments[1]);
    const QSIFlowsheet flowsheet = QSISimulation(plant.Neutral()).Flowsheet();
    for (const QSIMaterialStream stream : flowsheet.Stream()) {
        std::cout << stream.Name().Text() << ": " << stream.Temperature().Number("K") << " K";
        for (const QSIComponentProperties part : stream.Composition().Component()) {
            std::cout << ", " << part.ComponentName().Text() << ' ' << part.MoleFraction().Text();
        }
        std::cout << '\n';
    }
    for (const QSIUnitOperation unit : flowsheet.UnitOperation()) {
        if (const auto compressor = fixtop::client::As<QSICompressor>(unit)) {
            std::cout << compressor->Name().Text() << ": " << compressor->ToNode().Path() << '\n';
        }
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
