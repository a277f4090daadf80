# The tests bring the title menu up in their own process and run the built game, both on the test
# display with its keyboard focus and the build's throwaway home and data: one at a time.
set(FOLDER_ENVIRONMENT
  "ALSOFT_CONF=${CMAKE_CURRENT_SOURCE_DIR}/audio/alsoft.conf"
  "NORVANE_WAVE_FILE=${CMAKE_CURRENT_BINARY_DIR}/tmp/menu.wav"
  "SDL_VIDEODRIVER=x11")
set(FOLDER_PROPERTIES RESOURCE_LOCK display)
set(FOLDER_DEFINITIONS VANTORIX_BINARY="$<TARGET_FILE:vantorix>")
set(FOLDER_DEPENDS vantorix)
set(FOLDER_LIBRARIES X11)
