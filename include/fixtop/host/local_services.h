// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host's services as this side of the process knows them. The module and the host compile the
// library Fixtop::host each for itself, and each says once which services its descriptions and
// arrays shall ask: those of an address that is known by its moniker alone, and the host's heap.

#include "fixtop/host/services.h"

namespace fixtop::host {

// Null until they are set.
HostServices* LocalServices();
void SetLocalServices(HostServices* services);

}  // namespace fixtop::host
