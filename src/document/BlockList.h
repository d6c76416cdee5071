#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace tlm {

// A sequence of weighted items kept in short blocks, with a Fenwick tree over the block weights.
// Inserting or erasing moves at most one block's items; the weight in front of a position and the
// search for a position by a monotone condition cost about a logarithm of the number of items.
// `Item` gives its weight through `Weight()`; a change of weight must go through `Update`.
template <typename Item>
class BlockList {
public:
    struct Position {
        std::size_t block = 0;
        std::size_t index = 0;
        friend bool operator==(const Position&, const Position&) = default;
    };

    // A position found by search, with the total weight of the items in front of it.
    struct Found {
        Position position;
        std::uint64_t weightBefore = 0;
    };

    bool Empty() const { return count == 0; }
    std::size_t Size() const { return count; }
    std::uint64_t TotalWeight() const { return totalWeight; }

    Position Begin() const { return {0, 0}; }
    Position End() const { return {blocks.size(), 0}; }
    bool IsEnd(Position position) const { return position.block >= blocks.size(); }

    Position Next(Position position) const
    {
        if (++position.index >= blocks[position.block].size()) {
            return {position.block + 1, 0};
        }
        return position;
    }

    // The position before `position`; the caller makes sure there is one.
    Position Previous(Position position) const
    {
        if (position.index > 0) {
            return {position.block, position.index - 1};
        }
        const std::size_t block = position.block - 1;
        return {block, blocks[block].size() - 1};
    }

    Position Last() const { return Previous(End()); }

    const Item& At(Position position) const { return blocks[position.block][position.index]; }

    std::uint64_t WeightBefore(Position position) const
    {
        if (IsEnd(position)) {
            return totalWeight;
        }
        std::uint64_t weight = BlockPrefix(position.block);
        const std::vector<Item>& items = blocks[position.block];
        for (std::size_t i = 0; i < position.index; ++i) {
            weight += items[i].Weight();
        }
        return weight;
    }

    // The first position whose item fails `before(item, weightBefore)`; `before` must hold for a prefix
    // of the sequence and fail for the rest. Gives End() with the total weight when it always holds.
    template <typename Predicate>
    Found FindFirstNot(Predicate before) const
    {
        // Last block whose first item still satisfies the predicate.
        std::size_t low = 0;
        std::size_t high = blocks.size();
        while (low < high) {
            const std::size_t middle = low + (high - low) / 2;
            if (before(blocks[middle].front(), BlockPrefix(middle))) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        if (low == 0) {
            return {Begin(), 0};
        }
        const std::size_t block = low - 1;
        const std::vector<Item>& items = blocks[block];
        std::uint64_t prefix[MaxBlockItems + 1];
        prefix[0] = BlockPrefix(block);
        for (std::size_t i = 0; i < items.size(); ++i) {
            prefix[i + 1] = prefix[i] + items[i].Weight();
        }
        // items[0] satisfies the predicate; find the first that does not.
        std::size_t first = 1;
        std::size_t last = items.size();
        while (first < last) {
            const std::size_t middle = first + (last - first) / 2;
            if (before(items[middle], prefix[middle])) {
                first = middle + 1;
            } else {
                last = middle;
            }
        }
        if (first == items.size()) {
            return {{block + 1, 0}, prefix[first]};
        }
        return {{block, first}, prefix[first]};
    }

    // Inserts before `position` (End() appends); gives the position of the new item.
    Position Insert(Position position, Item item)
    {
        const std::uint64_t weight = item.Weight();
        if (blocks.empty()) {
            blocks.emplace_back();
            blocks.back().reserve(MaxBlockItems);
            blocks.back().push_back(std::move(item));
            blockWeights.push_back(weight);
            ++count;
            totalWeight += weight;
            RebuildIndex();
            return {0, 0};
        }
        if (IsEnd(position)) {
            position = {blocks.size() - 1, blocks.back().size()};
        }
        std::vector<Item>& items = blocks[position.block];
        items.insert(items.begin() + static_cast<std::ptrdiff_t>(position.index), std::move(item));
        ++count;
        totalWeight += weight;
        if (items.size() < MaxBlockItems) {
            AddToBlock(position.block, weight);
            return position;
        }
        // Split the full block in halves.
        std::vector<Item> upper;
        upper.reserve(MaxBlockItems);
        const std::size_t half = items.size() / 2;
        std::uint64_t upperWeight = 0;
        for (std::size_t i = half; i < items.size(); ++i) {
            upperWeight += items[i].Weight();
            upper.push_back(std::move(items[i]));
        }
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(half), items.end());
        blockWeights[position.block] += weight;
        blockWeights[position.block] -= upperWeight;
        blocks.insert(blocks.begin() + static_cast<std::ptrdiff_t>(position.block) + 1, std::move(upper));
        blockWeights.insert(blockWeights.begin() + static_cast<std::ptrdiff_t>(position.block) + 1, upperWeight);
        RebuildIndex();
        if (position.index >= half) {
            return {position.block + 1, position.index - half};
        }
        return position;
    }

    // Erases the item at `position`; gives the position of the item that followed it.
    Position Erase(Position position)
    {
        std::vector<Item>& items = blocks[position.block];
        const std::uint64_t weight = items[position.index].Weight();
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(position.index));
        --count;
        totalWeight -= weight;
        if (items.empty()) {
            blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(position.block));
            blockWeights.erase(blockWeights.begin() + static_cast<std::ptrdiff_t>(position.block));
            RebuildIndex();
            return {position.block, 0};
        }
        SubtractFromBlock(position.block, weight);
        if (position.index >= items.size()) {
            return {position.block + 1, 0};
        }
        return position;
    }

    // Changes the item at `position` through `change(item)`, keeping the weights in step.
    template <typename Change>
    decltype(auto) Update(Position position, Change change)
    {
        Item& item = blocks[position.block][position.index];
        const std::uint64_t before = item.Weight();
        struct Reweigh {
            BlockList* list;
            Item* item;
            std::size_t block;
            std::uint64_t before;
            ~Reweigh()
            {
                const std::uint64_t after = item->Weight();
                if (after > before) {
                    list->totalWeight += after - before;
                    list->AddToBlock(block, after - before);
                } else if (before > after) {
                    list->totalWeight -= before - after;
                    list->SubtractFromBlock(block, before - after);
                }
            }
        } reweigh{this, &item, position.block, before};
        return change(item);
    }

    void Clear()
    {
        blocks.clear();
        blockWeights.clear();
        tree.clear();
        count = 0;
        totalWeight = 0;
    }

    // Visits the items in order.
    template <typename Visit>
    void ForEach(Visit visit) const
    {
        for (const std::vector<Item>& items : blocks) {
            for (const Item& item : items) {
                visit(item);
            }
        }
    }

private:
    static constexpr std::size_t MaxBlockItems = 128;

    // Weight of the blocks in front of `block`.
    std::uint64_t BlockPrefix(std::size_t block) const
    {
        std::uint64_t sum = 0;
        for (std::size_t i = block; i > 0; i -= i & (~i + 1)) {
            sum += tree[i - 1];
        }
        return sum;
    }

    void AddToBlock(std::size_t block, std::uint64_t weight)
    {
        blockWeights[block] += weight;
        for (std::size_t i = block + 1; i <= tree.size(); i += i & (~i + 1)) {
            tree[i - 1] += weight;
        }
    }

    void SubtractFromBlock(std::size_t block, std::uint64_t weight)
    {
        blockWeights[block] -= weight;
        for (std::size_t i = block + 1; i <= tree.size(); i += i & (~i + 1)) {
            tree[i - 1] -= weight;
        }
    }

    void RebuildIndex()
    {
        tree.assign(blockWeights.begin(), blockWeights.end());
        for (std::size_t block = 0; block < tree.size(); ++block) {
            const std::size_t parent = block + ((block + 1) & (~(block + 1) + 1));
            if (parent < tree.size()) {
                tree[parent] += tree[block];
            }
        }
    }

    std::vector<std::vector<Item>> blocks;
    std::vector<std::uint64_t> blockWeights;
    std::vector<std::uint64_t> tree;
    std::size_t count = 0;
    std::uint64_t totalWeight = 0;
};

} // namespace tlm
