#include "game/laser.h"

#include <algorithm>

namespace vantorix {

Laser::Laser(norvane::gfx::Image* image, VantorixSprite* owner, float ttl, float fadeRate)
    : owner(owner), ttl(ttl), fadeRate(fadeRate) {
    position = owner->position;
    setImage(image);
    visible = true;
    collidable = true;
}

void Laser::perform(float t) {
    position.x += t * velocity.x;
    position.y += t * velocity.y;
    if (ttl > 0.0f) ttl = std::max(0.0f, ttl - t);
    if (ttl == 0.0f) {
        color.alpha -= t * fadeRate;
        if (color.alpha <= 0.0f) {
            color.alpha = 0.0f;
            deleteMe();
        }
        if (color.alpha < 0.5f) collidable = false;
    }
    ImageSprite::perform(t);
    const bool onScreen = position.y <= size.y + 600.0f - hotspot.y && hotspot.x - size.x <= position.x &&
                          position.x <= hotspot.x + 800.0f;
    if (!onScreen) deleteMe();
}

}  // namespace vantorix
