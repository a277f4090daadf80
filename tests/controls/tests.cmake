# SDL's dummy video driver is enough: events are pushed into its queue, no window is needed.
set(FOLDER_ENVIRONMENT "SDL_VIDEODRIVER=dummy")
