#include "math/random.h"

#include <cstdlib>
#include <ctime>

namespace norvane {

namespace {
// In [0, 1). Double, because rand()'s largest value times 2^-31 rounds to 1.0 in float,
// which would let random_int(max) return max + 1.
double unit() { return std::rand() * (1.0 / 2147483648.0); }
}  // namespace

void randomize() { std::srand(static_cast<unsigned int>(std::time(nullptr))); }

void randomize(unsigned int seed) { std::srand(seed); }

float random(float max) { return static_cast<float>(unit() * max); }

float random(float min, float max) { return static_cast<float>(min + unit() * (max - min)); }

int random_int(int min, int max) { return min + static_cast<int>((static_cast<double>(max) - min + 1) * unit()); }

int random_int(int max) { return static_cast<int>((static_cast<double>(max) + 1) * unit()); }

int random(int min, int max) { return random_int(min, max); }

int random(int max) { return random_int(max); }

}  // namespace norvane
