// Writing XML: a deep tree must cost time in proportion to the text written, not to its depth cubed.
#include <benchmark/benchmark.h>

#include "xml/xml.h"

using norvane::xml::Node;

namespace {

// A chain of `depth` nested elements, each with one attribute.
Node* chain(int depth) {
    Node* root = new Node;
    root->name = "n";
    Node* tip = root;
    for (int i = 1; i < depth; ++i) {
        Node* child = new Node;
        child->name = "n";
        (*child)["i"] = std::to_string(i);
        *tip += child;
        tip = child;
    }
    return root;
}

void BM_WriteDeepTree(benchmark::State& state) {
    Node* root = chain(static_cast<int>(state.range(0)));
    size_t bytes = 0;
    for (auto _ : state) {
        const std::string text = root->toString(0);
        bytes += text.size();
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(bytes));
    delete root;
}
BENCHMARK(BM_WriteDeepTree)->Arg(1000)->Arg(2000)->Arg(4000);

}  // namespace

BENCHMARK_MAIN();
