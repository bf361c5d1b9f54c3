#pragma once

// Waits until no other run is writing the network files, then keeps them to this run until it
// ends, so that the five files always come from one config.json. Where the lock cannot be had
// (no writable /run) the run goes on without it.
void lockNetworkFiles();
