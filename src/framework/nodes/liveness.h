// SPDX-License-Identifier: Apache-2.0
#pragma once

// Liveness: what all handles on one case share about it: whether it is there, and the revision of
// its structure. A handle notes the revision at which it was last sure of its object; as long as
// the number is the same, the object lives, and that is one comparison. When it differs the handle
// looks again before it touches the object.
//
// LivingNode: what a node, or a family of nodes, tells of the object that it stands on.
//
// Ownership: counted by whoever holds it, nothing owns upward. Watchers are not counted: they leave
// before they go, also from inside a round. Threads: the one of the simulation.

#include <cstdint>
#include <string>

#include "fixtop/ref.h"
#include "framework/nodes/read_ahead.h"

namespace fixtop::inline FI {
class FICursorBase;
}

namespace fixtop {

class Liveness {
 public:
    // Wants to be told what the host tells of the case. All may come inside any host call that may
    // change the case.
    class Watcher {
     public:
        // The case is gone: once, and the watcher has left by then.
        virtual void OnEnd() = 0;
        // Something of the case changed, and nobody else told the watcher of it.
        virtual void OnChange() = 0;
        // The list of subscribers, in which the watcher may have stood, was emptied.
        virtual void OnForgotten() = 0;

     protected:
        Watcher() = default;
        virtual ~Watcher() = default;

     private:
        friend class Liveness;
        Watcher* previous_ = nullptr;
        Watcher* next_ = nullptr;
        // The last round in which it was told of a change.
        std::uint32_t heard_ = 0;
        bool watches_ = false;
        bool is_quiet_ = false;
    };

    Liveness(const Liveness&) = delete;
    Liveness& operator=(const Liveness&) = delete;

    int AddRef() { return ++references_; }
    int Release() {
        const int left = --references_;
        if (left == 0) delete this;
        return left;
    }

    bool IsCurrent(std::uint64_t revision) const { return *revision_ == revision; }
    // To be noted by who has just looked; never 0.
    std::uint64_t Revision() const { return *revision_; }
    // Whether something may have gone since: a host that keeps no number need not have told of it.
    bool MayHaveLost(std::uint64_t revision) const {
        return revision_ == &own_ || !IsCurrent(revision);
    }
    bool HasEnded() const { return revision_ == &kEnded; }
    // Asks the host whether the case is there; one that is not ends, without telling anybody.
    bool Look();

    // A watcher may watch one case; to watch twice is as once. The second is for those who need not
    // hear of anything at once: nothing is installed at the host for them.
    void Watch(Watcher& watcher);
    void WatchQuietly(Watcher& watcher);
    void Leave(Watcher& watcher);
    // The watcher was told of the change of this round by another road.
    void Heard(Watcher& watcher) const { watcher.heard_ = round_; }

    // The case is gone for good; tells the watchers, who have not been told by an end untold.
    void End();
    // The same, of which the watchers find out by themselves.
    void EndUntold();
    // A change of the case that the host tells: between the two others may tell watchers of it; the
    // second tells the rest.
    void BeginChange();
    void TellChange();
    // See Watcher::OnForgotten.
    void TellForgotten();

    // Hands an event of the case to `hand_on`, as whose it is known meanwhile.
    template <class HandOn>
    void AsEvent(HandOn hand_on) {
        const Liveness* const outer = event_;
        event_ = this;
        hand_on();
        event_ = outer;
    }
    // The case whose event is being handed on; null outside of any.
    static const Liveness* OfEvent() { return event_; }

 protected:
    // `revision` is the host's place of the number, null when it keeps none: then what it tells
    // counts.
    explicit Liveness(const std::uint64_t* revision) : revision_(revision ? revision : &own_) {}
    virtual ~Liveness();

    // Whether the host still has the case.
    virtual bool IsThere() const = 0;
    // The first watcher has come and the last has left, quiet ones apart; the case has just ended.
    virtual void OnFirstWatcher() = 0;
    virtual void OnNoWatcher() = 0;
    virtual void OnEnded(bool told) = 0;

 private:
    // A walk over the watchers that survives their leaving.
    struct Round {
        Watcher* next;
        Round* outer;
    };

    template <class Tell>
    void ForEachWatcher(Tell tell);
    void Enter(Watcher& watcher, bool quietly);

    // No revision of a host, and no revision that a handle has noted.
    static constexpr std::uint64_t kEnded = ~std::uint64_t{0};

    static inline const Liveness* event_ = nullptr;

    const std::uint64_t* revision_;
    std::uint64_t own_ = 1;
    // All watchers hear of each, so that none is ever half the range behind.
    std::uint32_t round_ = 0;
    Watcher* first_ = nullptr;
    int listeners_ = 0;
    Round* rounds_ = nullptr;
    int references_ = 0;
};

class LivingNode {
 public:
    // What tells a node without a number of its own from others of its name below one parent.
    struct Mark {
        int ordinal = 0;
        // Where what is looked for may lie anywhere: the number of the object that it belongs to
        // and the way from there.
        std::uint64_t holder = 0;
        std::string way;
        bool operator==(const Mark&) const = default;
    };

    // Lent, null when there is nothing that may go.
    virtual Liveness* Life() const = 0;
    // What the node stood on does not live any more.
    virtual bool IsGone() const = 0;
    // A number of the object itself; 0 when the node has none of its own and is known by its key.
    virtual std::uint64_t ObjectNumber() const { return 0; }
    // Asks nothing of what it stands on.
    virtual Mark MarkOf() const { return {}; }
    // Where a read of it looks beyond the node itself.
    virtual void TellReads(ReadAhead&) const {}
    // RemakeCursor makes one that can't be told from this one, which stands on the node: it need
    // not be kept then.
    virtual bool Remakes(FICursorBase&) const { return false; }
    virtual Ref<FICursorBase> RemakeCursor() const;
    // No other object ever has the number, so that it alone says whether the object lives.
    virtual bool IsTracked() const { return false; }
    // Whether both stand, or stood, on the same. Asks nothing of what they stand on.
    virtual bool StandsWith(const LivingNode& other) const {
        return ObjectNumber() != 0 && ObjectNumber() == other.ObjectNumber();
    }

 protected:
    ~LivingNode() = default;
};

// What clients are told by a handle whose object is gone.
inline constexpr char kNodeDeletedText[] = "Node deleted";
inline constexpr char kNodeInvalidText[] = "Node invalid";

}  // namespace fixtop
