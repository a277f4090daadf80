#include <SDL/SDL.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "files/groupprivilege.h"
#include "norvane.h"
#include "vantorix.h"

int main(int, char**) {
    try {
        norvane::dropGroupPrivilege();  // held again only while the shared highscores are written
        application = new vantorix::Vantorix();
        application->run();
        delete application;  // never returns: the shutdown ends the process with status 0
    } catch (const std::string& text) {
        std::cerr << text << std::endl;
        // Give the desktop back its mode and cursor, and let scripts see that the game failed.
        norvane::cleanUp();
        SDL_Quit();
        return EXIT_FAILURE;
    }
}
