#include "particles/starfield.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "math/random.h"

namespace norvane {
namespace particles {

static_assert(sizeof(basic_Vector2D<float>) == 2 * sizeof(float), "stars are handed to GL as a float array");

Starfield* StarfieldProperties::create() const { return new Starfield(*this); }

Starfield::Starfield(const StarfieldProperties& properties) : StarfieldProperties(properties) { init(); }

void Starfield::init() {
    unsigned int total = 0;
    for (const StarClass& starClass : classes) total += starClass.count;
    std::vector<basic_Vector2D<float>>(total).swap(stars);
    starCount = static_cast<int>(total);
    for (basic_Vector2D<float>& star : stars) {
        star.x = random(width);
        star.y = random(height);
    }
}

void Starfield::perform(float ms) {
    basic_Vector2D<float>* star = stars.data();
    basic_Vector2D<float>* const last = star + stars.size();  // guards against classes changed since init()
    for (const StarClass& starClass : classes) {
        const float distance = speed * ms * starClass.speed;
        basic_Vector2D<float>* end = star + std::min<size_t>(starClass.count, static_cast<size_t>(last - star));
        for (; star != end; ++star) {
            star->y -= distance;
            if (star->y >= 0.0f) continue;
            star->x = random(width);
            star->y += height;
            // a step longer than the whole area would leave the star below it for several frames
            if (star->y < 0.0f) star->y = height > 0.0f ? std::fmod(star->y, height) + height : 0.0f;
        }
    }
}

void Starfield::draw() const {
    if (stars.empty()) return;
    glPushAttrib(GL_TEXTURE_BIT | GL_COLOR_BUFFER_BIT);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glDisable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
    glVertexPointer(2, GL_FLOAT, 0, stars.data());
    glEnableClientState(GL_VERTEX_ARRAY);
    GLint first = 0;
    for (const StarClass& starClass : classes) {
        const GLint count = std::min(static_cast<GLint>(starClass.count), starCount - first);
        if (count <= 0) continue;
        starClass.color.apply();
        glDrawArrays(GL_POINTS, first, count);
        first += count;
    }
    glPopMatrix();
    glPopClientAttrib();
    glPopAttrib();
}

void Starfield::release() {
    std::vector<basic_Vector2D<float>>().swap(stars);
    starCount = 0;
}

}  // namespace particles
}  // namespace norvane
