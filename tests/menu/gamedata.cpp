// The data and settings helpers of the resources tests, built into this folder's tests too.
#include "gameresources/gamedata.cpp"
