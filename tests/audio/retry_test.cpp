#include <gtest/gtest.h>

#include "audio/resources.h"
#include "helpers.h"

using namespace norvane::audio;
using namespace testaudio;

namespace {
class SampleRetry : public AudioTest {};
}  // namespace

// A failed load used to keep its OpenAL buffer: the sample counted as loaded, silent for good.
TEST_F(SampleRetry, RefreshRetriesAfterAFailedLoad) {
    CachedSample sample;
    sample.name = "boom";
    for (const char* broken : {"no sound here", ""}) {
        sample.filename = writeFile("boom.ogg", broken);
        EXPECT_THROW(sample.refresh(), std::string) << broken;
        EXPECT_EQ(sample.buffer, 0u);
    }
    sample.filename = makeOgg("boom.ogg", "4410s sine 441");
    sample.refresh();
    EXPECT_NE(sample.buffer, 0u);
    EXPECT_EQ(sample.size, 2 * 4410);
}
