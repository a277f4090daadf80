#include "gfx/animations.h"

#include "gfx/simpleimage.h"
#include "support/files.h"
#include "support/manager.h"

using namespace norvane;
using namespace norvane::gfx;

// Frame i is (10 + i) x 20 with the hotspot (i, 1).
struct Still : Image {
    explicit Still(int i) { width = 10 + i, height = 20, hotspot = {float(i), 1}, outerBoundingBox = {i, 0, 5, 5}; }
    void draw(const basic_Vector2D<float>&, BlendMode) const override {}
    void draw(const basic_Rect<float>&, BlendMode) const override {}
    void drawStretched(const basic_Rect<float>&, BlendMode) const override {}
};

struct Film {
    explicit Film(bool loop, float delay = 100) {
        for (int i = 0; i < 3; ++i) animation.frames.emplace_back(&stills[i], delay);
        animation.loop = loop;
    }
    std::vector<int> indices(float speed, std::vector<float> steps) {
        std::unique_ptr<AnimationReference> ref(animation.getReference(speed));
        std::vector<int> seen;
        for (float ms : steps) ref->perform(ms), seen.push_back(ref->index);
        return seen;
    }
    Still stills[3] = {Still(0), Still(1), Still(2)};
    Animation animation;
};

using Indices = std::vector<int>;

TEST(Animation, FramesAdvanceOnceTheirTimeIsExceededOneShotsStopAtTheEndAndBanksReadDefaults) {
    Film film(true);
    EXPECT_EQ(film.indices(1, {100, 1}), (Indices{0, 1}));  // equal is not enough
    EXPECT_EQ(film.indices(2, {200, 1}), (Indices{0, 1}));  // speed 2 doubles every frame
    EXPECT_EQ(film.indices(1, {101, 101, 101, 101}), (Indices{1, 2, 0, 1}));
    EXPECT_EQ(film.indices(1, {101, 250}), (Indices{1, 0}));  // a long step skips frames
    std::unique_ptr<AnimationReference> ref(film.animation.getReference(1));
    ref->perform(101);
    EXPECT_FLOAT_EQ(ref->elapsed, 1.0f);
    ref->setFrame(&film.animation.frames[2]);  // the reference takes on the frame image's data
    EXPECT_EQ((std::vector<float>{float(ref->getWidth()), ref->getHotspot().x, float(ref->getOuterBoundingBox().x)}),
              (std::vector<float>{12, 2, 2}));
    Film once(false);
    ref.reset(once.animation.getReference(1));
    ref->perform(10000);
    EXPECT_TRUE(ref->index == 2 && ref->isFinished());
    const float elapsed = ref->elapsed;
    ref->perform(10000);  // time no longer accumulates
    EXPECT_EQ(ref->elapsed, elapsed);
    // Degenerate animations neither hang nor touch missing frames.
    Animation empty;
    empty.loop = false;
    ref.reset(empty.getReference(1));
    ref->perform(100);
    ref->draw(basic_Vector2D<float>{0, 0}, BLEND_DEFAULT);  // nothing to draw
    EXPECT_TRUE(AnimationReference().isFinished());
    for (float delay : {0.0f, -5.0f, 1e-30f}) Film(true, delay).indices(1, {16, 16});
    Film(true).indices(-1, {16, 16});

    // A bank reads loops, the enclosing image bank and defaults.
    OwningManager manager;
    auto* images = new ImageBank;
    manager.banks["sprites"] = images;
    for (const char* name : {"boom01_a", "boom02_a", "boom03_a", "ship"}) images->add(name, new SimpleImage(name, ""));
    std::unique_ptr<xml::Node> root(xml::loadXML(writeFile("animations.xml", R"(<animations imageBank="sprites">
      <loop var="n" from="1" to="3" digits="2"><animation name="boom[n]" delay="40" loop="false"><frame image="boom[n]_a"/>
        <frame image="boom[n]_a" delay="80"/></animation></loop>
      <animation name="ship"><loop var="i" from="1" to="2"><frame image="ship"/></loop><frame image="gone"/></animation>
      <animation name="ship" imageBank="unknown"><frame image="ship"/></animation><animation><frame image="ship"/></animation>
      <animation name="blank"><frame delay="5"/></animation></animations>)").c_str()));
    AnimationBank bank;
    bank.manager = &manager;
    const std::string log = captured([&] { bank.getFromNode(root.get(), std::string()); });
    EXPECT_EQ(bank.size(), 5);  // boom1..3, ship (the later one), blank
    Animation* boom2 = bank.find("boom2");
    ASSERT_TRUE(boom2 && boom2->frames.size() == 2u);
    EXPECT_TRUE(!boom2->loop && boom2->frames[0].image == images->find("boom02_a"));
    EXPECT_EQ(boom2->frames[0].delay + boom2->frames[1].delay, 40.0f + 80.0f);
    Animation* ship = bank.find("ship");
    ASSERT_TRUE(ship && ship->frames.size() == 1u);  // an unknown imageBank keeps the enclosing one
    EXPECT_TRUE(ship->loop && ship->delay == 10.0f && ship->frames[0].image == images->find("ship"));
    for (const char* line : {"No name specified for animation. Skipping.", "No name specified for animation frame image. Skipping."})
        EXPECT_NE(log.find(line), std::string::npos) << log;
}
