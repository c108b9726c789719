// SPDX-License-Identifier: Apache-2.0
// All scenes against the tables of docs/lifetimes.md.
//
// A scene that fails is told as one line, which begins with its name. FIXTOP_SCENE runs only the
// scenes whose names hold that text, FIXTOP_SCENE_TRACE tells each before it is played, and
// FIXTOP_SCENE_LINES is how many lines a test may tell, 12 when it is not given.

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <tuple>

#include "lifetimes/scene_files.h"
#include "lifetimes/stage.h"

namespace fixtop {

// Where a sanitizer ends the program.
extern "C" void __asan_on_error() {
    std::fprintf(stderr, "in scene: %s\n", lifetimes::PresentScene());
}

namespace lifetimes {
namespace {

// Of the scenes in which the handle's own store is what the event happens in, each has to be set up
// for itself; these orders are played.
constexpr int kOwnOrders = 4;

void OnSignal(int number) {
    std::fprintf(stderr, "in scene: %s\n", PresentScene());
    std::signal(number, SIG_DFL);
    std::raise(number);
}

class Theatre : public testing::Environment {
 public:
    void SetUp() override {
        folder_ = std::make_unique<TemporaryFolder>();
        WriteSceneFiles(*folder_);
        for (int each : {SIGSEGV, SIGABRT, SIGFPE}) {
            if (std::signal(each, OnSignal) == SIG_ERR) std::perror("signal");
        }
    }
    void TearDown() override {
        const Tally& tally = TheTally();
        std::cout << tally.scenes << " scenes, " << tally.answers << " answers, " << tally.failures
                  << " wrong; " << tally.addresses_taken_again
                  << " times an address was taken again\n";
        folder_.reset();
    }

 private:
    std::unique_ptr<TemporaryFolder> folder_;
};

const auto* const g_theatre = testing::AddGlobalTestEnvironment(new Theatre);

class Scenes : public testing::TestWithParam<std::tuple<View, Kind, Event>> {
 protected:
    void Play(Scene scene) {
        std::vector<int> orders;
        const int count = OrdersOf(scene.view, scene.kind);
        const int step = IsOwn(scene.moment) ? std::max(1, count / kOwnOrders) : 1;
        for (scene.order = 0; scene.order < count; scene.order += step) {
            if (IsWanted(scene)) orders.push_back(scene.order);
        }
        if (orders.empty()) return;
        scene.order = orders.front();
        if (std::getenv("FIXTOP_SCENE_TRACE")) std::cerr << scene.Name() << "\n";
        // Of handles that change what the others see each is alone.
        const bool alone = IsOwn(scene.moment) || scene.kind == Kind::batch;
        if (!alone) return PlayOrders(scene, orders);
        for (int order : orders) {
            scene.order = order;
            PlayOrders(scene, {order});
        }
    }
    void TearDown() override {
        if (lines_ > MostLines()) ADD_FAILURE() << lines_ - MostLines() << " more";
    }

 private:
    static int MostLines() {
        const char* most = std::getenv("FIXTOP_SCENE_LINES");
        return most ? std::atoi(most) : 12;
    }
    static bool IsWanted(const Scene& scene) {
        const char* wanted = std::getenv("FIXTOP_SCENE");
        return !wanted || scene.Name().find(wanted) != std::string::npos;
    }
    void PlayOrders(const Scene& scene, const std::vector<int>& orders) {
        Stage stage(scene, orders, [this](const std::string& line) {
            if (++lines_ <= MostLines()) ADD_FAILURE() << line;
        });
        stage.Play();
    }

    int lines_ = 0;
};

TEST_P(Scenes, answer_as_the_tables_say) {
    Scene scene;
    std::tie(scene.view, scene.kind, scene.event) = GetParam();
    for (Moment moment : AllMoments()) {
        for (Place place : AllPlaces()) {
            scene.moment = moment;
            scene.place = place;
            if (CanBe(scene)) Play(scene);
        }
    }
}

// What one test plays: those of which there is a scene.
std::vector<std::tuple<View, Kind, Event>> Playable() {
    std::vector<std::tuple<View, Kind, Event>> all;
    for (View view : AllViews()) {
        for (Kind kind : AllKinds()) {
            const Place place = IsOfCase(kind) ? Place::top : Place::variable;
            Scene scene{view, kind, Event::none, Moment::between, place, 0};
            if (kind == Kind::batch) scene.place = Place::object;
            if (!CanBe(scene)) continue;
            for (Event event : AllEvents()) all.emplace_back(view, kind, event);
        }
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(All, Scenes, testing::ValuesIn(Playable()), [](const auto& each) {
    return std::string(NameOf(std::get<0>(each.param))) + "_" + NameOf(std::get<1>(each.param)) +
           "_" + NameOf(std::get<2>(each.param));
});

}  // namespace
}  // namespace lifetimes

}  // namespace fixtop
