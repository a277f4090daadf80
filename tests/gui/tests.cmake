# The window tests open windows that could take the keyboard focus from a test typing with
# xdotool, so they share the display lock with those.
set(FOLDER_PROPERTIES RESOURCE_LOCK display)
