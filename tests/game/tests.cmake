# The games run on the shipped data installed into the build's throwaway tree, in a window, with
# sound going to a wave file; the folder shares the display lock with the other tests that
# install data or type with xdotool.
set(FOLDER_ENVIRONMENT
  "ALSOFT_CONF=${CMAKE_CURRENT_SOURCE_DIR}/audio/alsoft.conf"
  "NORVANE_WAVE_FILE=${CMAKE_CURRENT_BINARY_DIR}/tmp/game.wav")
set(FOLDER_PROPERTIES RESOURCE_LOCK display)
