#ifndef TESTS_MENU_PROGRAM_H
#define TESTS_MENU_PROGRAM_H

#include <sys/types.h>

#include <string>
#include <vector>

// The built game (or another program), run in a directory of its own that keeps its output; killed
// when the object goes.
class Program {
public:
    // `environment`: extra NAME=value entries on top of the test's own.
    explicit Program(const std::string& workDir, std::vector<std::string> environment = {},
                     std::vector<std::string> command = {VANTORIX_BINARY});
    ~Program();

    // The exit status, or -1 when it did not end within `seconds`.
    int wait(double seconds = 30.0);
    std::string output() const;  // everything printed so far
    // The id of its window once it is mapped and has the keyboard focus; 0 if none came.
    std::string window(double seconds = 30.0);
    // Asks the window to close, as a window manager does when the player clicks its close box.
    void requestClose();

    const std::string dir;

private:
    pid_t pid = -1;
    std::string windowId;
};

// Runs xdotool with `arguments`; false when it failed.
bool xdotool(const std::string& arguments);

#endif
