# The start-up tests run the built game, once without a display and once on SDL's dummy driver.
set(FOLDER_ENVIRONMENT "SDL_VIDEODRIVER=dummy")
set(FOLDER_DEFINITIONS VANTORIX_BINARY="$<TARGET_FILE:vantorix>")
set(FOLDER_DEPENDS vantorix)
