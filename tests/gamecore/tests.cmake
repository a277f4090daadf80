# The start-up tests run the built game, once without a display and once on SDL's dummy driver.
set(FOLDER_ENVIRONMENT "SDL_VIDEODRIVER=dummy")
set(FOLDER_DEFINITIONS VANTORIX_BINARY="$<TARGET_FILE:vantorix>")
set(FOLDER_DEPENDS vantorix)
# The game reads and writes its settings in the build's throwaway tree, as the resource tests do.
set(FOLDER_PROPERTIES RESOURCE_LOCK display)
