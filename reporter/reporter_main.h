// The whole life of the process: brings the messenger and the event queue
// up, fetches the configuration, places the two subscriptions around
// INIT_OK, runs the main loop and ends when the parent has closed its
// stream.
#pragma once

// Returns the exit code: 0 after an orderly end; 1 after an error::Exception
// reached it, which it writes to standard error as "Caught: " + text.
int reporter_main();
