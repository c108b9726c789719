// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace fixtop {

// Frees what members hand out in task memory, as a client does: by the system alone.
void FreeAsClient(void* memory);

}  // namespace fixtop
