#pragma once

// A client of the plant: a top, a view of it, and handles on the places of a scene.

#include <memory>
#include <string>
#include <vector>

#include "lifetimes/plant.h"
#include "lifetimes/subject.h"

namespace lifetimes {

// One level of a path: the name, and which of those that have it.
struct Step {
    std::string name;
    int number = 0;
};
using Path = std::vector<Step>;

std::string TextOf(const Path& path);

class Client {
 public:
    // With `listens` the host tells the top of its changes, as the combined top has it.
    Client(View view, Place place, Plant& plant, bool listens);

    // A handle by the present path of the place, or of something else that no event concerns; null
    // when the path leads nowhere.
    std::unique_ptr<Subject> Make(Kind kind);
    std::unique_ptr<Subject> MakeOther(Kind kind);
    // In the raw view, whatever view the client has.
    Ref<FIIteratorBase> Bystander();

 private:
    std::unique_ptr<Subject> MakeOfCase(Kind kind);
    std::unique_ptr<Subject> MakeAt(Kind kind, const Path& path);
    std::unique_ptr<Subject> MakeCursor(Kind kind, const Path& path);
    Ref<FIIteratorBase> At(const Path& path) const;
    Ref<FIEntry> EntryAt(const Path& path) const;
    Access AccessOf() const;

    View view_;
    Place place_;
    Plant& plant_;
    Ref<FIEntry> top_;
    Ref<FIEntry> root_;
};

}  // namespace lifetimes
