# The real-window tests move the pointer and type with xdotool: they need the display and its
# keyboard focus to themselves.
set(FOLDER_PROPERTIES RESOURCE_LOCK display)
