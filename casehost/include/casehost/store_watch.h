// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace fixtop::casehost {

// Who watches the stores of clients, as a host's own windows do. This one lets all of them pass.
class StoreWatch {
 public:
    virtual ~StoreWatch() = default;

    // False: the store has no effect.
    virtual bool MayStore() { return true; }
    // A store was found allowed and has had no effect yet. Objects and cases may go meanwhile.
    virtual void InStore() {}
};

}  // namespace fixtop::casehost
