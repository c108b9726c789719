// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/soak_view.h"

namespace fixtop::lifetimes {

namespace {

const Path kSheet = {{"appModel"}, {"FlowSheetObjects"}};

}  // namespace

Path PathTo(const World& world, bool neutral, int number, World::Field field) {
    const World::Thing& thing = world.At(number);
    Path path = neutral ? Path{{"Flowsheet"}} : kSheet;
    if (thing.holder >= 0) {
        if (neutral) {
            path.push_back({"Block", world.IndexOf(thing.holder)});
        } else {
            path.push_back({"UnitOps"});
            path.push_back({world.At(thing.holder).name});
        }
    }
    if (neutral) {
        path.push_back({thing.is_operation ? "Block" : "Stream", world.IndexOf(number)});
    } else {
        path.push_back({thing.is_operation ? "UnitOps" : "Streams"});
        path.push_back({thing.name});
    }
    if (field == World::Field::temperature) path.push_back({"Temperature"});
    if (field == World::Field::note) path.push_back({neutral ? "Remark" : "Notes"});
    if (field == World::Field::profile) {
        path.push_back({"Profile", neutral ? 1 : 0});
        if (!neutral) path.push_back({"Elem1"});
    }
    return path;
}

}  // namespace fixtop::lifetimes
