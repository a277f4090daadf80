#ifndef NORVANE_PARTICLES_STARFIELD_H
#define NORVANE_PARTICLES_STARFIELD_H

#include <vector>

#include "gfx/color.h"
#include "math/geometry.h"

namespace norvane {
namespace particles {

struct StarClass {
    unsigned int count = 0;
    float speed = 0.0f;  // units per ms at a field speed of 1
    Color color;
};

class Starfield;

// Areas are in the coordinates of the 2D render context, (0, 0) at the lower left.
struct StarfieldProperties {
    float width = 0.0f;
    float height = 0.0f;
    std::vector<StarClass> classes;  // in drawing order

    Starfield* create() const;  // owned by the caller
};

// Stars of every class in one array, so each class is drawn with one vertex-array call.
class Starfield : public StarfieldProperties {
public:
    explicit Starfield(const StarfieldProperties& properties);

    void init();  // scatters the stars anew, e.g. after the area changed
    void perform(float ms);
    void draw() const;  // needs the GL context
    void release();     // no stars until the next init()

    std::vector<basic_Vector2D<float>> stars;  // class after class, in the order of `classes`
    int starCount = 0;
    float speed = 1.0f;  // overall factor, set by the game from its difficulty
};

}  // namespace particles
}  // namespace norvane

#endif
