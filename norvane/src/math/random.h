#ifndef NORVANE_MATH_RANDOM_H
#define NORVANE_MATH_RANDOM_H

namespace norvane {

// All draw from the C library's rand().
void randomize();  // seeds from the clock
void randomize(unsigned int seed);  // a fixed sequence: tests and benchmarks replay the same game
float random(float max);             // [0, max)
float random(float min, float max);  // [min, max)
int random_int(int min, int max);    // min..max inclusive
int random_int(int max);             // 0..max inclusive
int random(int min, int max);
int random(int max);

}  // namespace norvane

#endif
