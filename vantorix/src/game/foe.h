#ifndef VANTORIX_GAME_FOE_H
#define VANTORIX_GAME_FOE_H

#include "game/vantorixsprite.h"

namespace vantorix {

// A pirate: enters from above at one edge, keeps to it, moves only up and down and fires across
// the screen. It follows the ship nearest to it horizontally, sometimes dives to the floor line,
// sometimes rams at the ship's height without firing. With no ship left it flies down and out.
class Foe : public VantorixSprite {
public:
    explicit Foe(bool rightSide);  // joins the back of the foe engine
    ~Foe() override;               // frees its side's slot

    void perform(float t) override;
    void onCollision(Sprite* other) override;

    void fire();
    void explode();

    unsigned int fireDelay;    // ms between volleys
    int volleyCount;           // shots in a volley after the first
    unsigned int volleyDelay;  // ms between the shots of a volley
    float acceleration;        // change of velocity per ms
    float distanceSpeedFactor;
    unsigned int floorTimer = 0;  // ms left of a floor run
    bool attacking = true;        // entering counts as an attack run: no firing
    bool rightSide;
    float velocity;  // vertical thrust, -1..1
    norvane::gfx::AnimationReference* animation;  // its frame shows the thrust; null without resources
    int shotsLeft = 0;
    float fireCooldown = 0.0f;  // ms
    bool alive = true;
    int hull;  // laser hits left
    bool leaving = false;
};

}  // namespace vantorix

#endif
