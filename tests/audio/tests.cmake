# OpenAL Soft writes the mix to a wave file in the build tree; each test names its own file.
set(FOLDER_ENVIRONMENT
  "ALSOFT_CONF=${dir}/alsoft.conf"
  "NORVANE_WAVE_FILE=${CMAKE_CURRENT_BINARY_DIR}/tmp/audio.wav"
  "TSAN_OPTIONS=halt_on_error=1:suppressions=${CMAKE_CURRENT_SOURCE_DIR}/tsan.supp")
