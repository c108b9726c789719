// SPDX-License-Identifier: Apache-2.0
// A random client of the sample host, whose streams come, go and take each other's names:
// random_client STEPS SEED. Each stream has a temperature of its own, so what a handle shows tells
// whose it is: its own stream's, or that it is gone.

#include <fixtop/client.h>
#include <fixtop/fixtop.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "own_host/own_host.h"

namespace {

using namespace fixtop::client;

struct Held {
    std::uint64_t stream;
    double temperature_C;
    Node node;
    Reference reference;
};

class RandomClient {
 public:
    explicit RandomClient(unsigned seed) : generator_(seed) {
        fixtop::FixtopInstallHost(&simulator_);
        plant_.emplace(Case::OfSession());
    }
    ~RandomClient() {
        held_.clear();
        plant_.reset();
        fixtop::FixtopInstallHost(nullptr);
    }

    void Step() {
        switch (Roll(8)) {
            case 0:
                return Add();
            case 1:
                return Delete();
            case 2:
                return Take();
            case 3:
                return simulator_.RunLoop();
            case 4:
                return Walk();
            default:
                return Use();
        }
    }

    long live = 0, gone = 0;

 private:
    int Roll(int count) { return static_cast<int>(generator_() % static_cast<unsigned>(count)); }

    static void Expect(bool holds, const char* what) {
        if (holds) return;
        std::fprintf(stderr, "%s\n", what);
        std::_Exit(1);
    }
    bool Lives(std::uint64_t stream) { return simulator_.Lives(stream); }

    void Add() {
        const std::string name(1, static_cast<char>('A' + Roll(6)));
        for (const auto& stream : simulator_.Streams()) {
            if (stream->GetName() == name.c_str()) return;
        }
        simulator_.Add(name.c_str(), ++last_temperature_, 100);
    }
    void Delete() {
        const auto& streams = simulator_.Streams();
        if (!streams.empty()) simulator_.Delete(*streams[Roll(static_cast<int>(streams.size()))]);
    }
    void Take() {
        const auto& streams = simulator_.Streams();
        if (streams.empty()) return;
        const own::Stream& stream = *streams[Roll(static_cast<int>(streams.size()))];
        auto& named = const_cast<own::Stream&>(stream);
        const std::string name = named.GetName().Str();
        const Node node =
            Roll(2) ? plant_->At("appModel.FlowSheetObjects.Streams." + name + ".Temperature")
                    : plant_->Neutral().At("Flowsheet.Stream(" + name + ").Temperature");
        if (held_.size() > 40) held_.erase(held_.begin() + Roll(40));
        held_.push_back({stream.Identity(), node.Number("C"), node, Reference(node)});
    }
    void Walk() {
        std::size_t count = 0;
        for (const Node& node : plant_->Matches("appModel.FlowSheetObjects.Streams.*")) {
            for (const Node& variable : node.Children()) variable.Attributes();
            ++count;
        }
        Expect(count == simulator_.Streams().size(), "the list is not the host's");
    }
    void Use() {
        if (held_.empty()) return;
        const int index = Roll(static_cast<int>(held_.size()));
        Held& held = held_[index];
        held.node.Attributes();
        const bool lives = Lives(held.stream);
        Expect(held.reference.IsLive() == lives, "a reference is wrong about its object");
        try {
            if (lives && Roll(3) == 0) held.node.Store(held.temperature_C, "C");
            const double shown = held.node.Number("C");
            Expect(lives, "a node shows an object that is gone");
            Expect(std::abs(shown - held.temperature_C) < 1e-9, "a node shows another object");
            ++live;
        } catch (const Refused&) {
            Expect(!lives, "a live node is refused");
            ++gone;
            if (Roll(2) == 0) held_.erase(held_.begin() + index);
        }
    }

    std::mt19937 generator_;
    own::Services simulator_;
    std::optional<Case> plant_;
    std::vector<Held> held_;
    double last_temperature_ = 0;
};

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) return 2;
    RandomClient client(static_cast<unsigned>(std::atoi(arguments[2])));
    for (long step = std::atol(arguments[1]); step > 0; --step) client.Step();
    std::printf("%ld answers of live nodes, %ld of gone ones\n", client.live, client.gone);
    return client.live > 0 && client.gone > 0 ? 0 : 1;
}
