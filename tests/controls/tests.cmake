# Most tests use SDL's dummy video driver; the one that drives a real window with xdotool needs the
# display and its keyboard focus to itself.
set(FOLDER_ENVIRONMENT "SDL_VIDEODRIVER=dummy")
set(FOLDER_PROPERTIES RESOURCE_LOCK display)
