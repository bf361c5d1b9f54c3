#pragma once

// How an operation talks: a person at a console, the management application, or not at all
// (one operation asking another for its answer).
enum UserMode { applicationMode = 0, consoleMode = 1, silentMode = 2 };
