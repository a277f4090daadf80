# The tests install the game's data into the build's throwaway tree, each with its own changes, and
# the Xvfb one opens a window: one at a time, and not while another test holds the display.
set(FOLDER_ENVIRONMENT
  "ALSOFT_CONF=${CMAKE_CURRENT_SOURCE_DIR}/audio/alsoft.conf"
  "NORVANE_WAVE_FILE=${CMAKE_CURRENT_BINARY_DIR}/tmp/gameresources.wav")
set(FOLDER_PROPERTIES RESOURCE_LOCK display)
