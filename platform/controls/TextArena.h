#pragma once

#include "api/Text.h"

#include <memory>
#include <vector>

namespace health {

// Keeps many texts that live and go together, without an allocation for each.
class TextArena {
public:
    // Copies a text into the arena; the result is valid until clear().
    TextView keep(TextView text);
    // Gives up all texts and keeps the storage for the next ones.
    void clear();

private:
    struct Block {
        std::unique_ptr<wchar_t[]> letters;
        std::size_t size;
    };

    void openBlock(std::size_t length);

    std::vector<Block> m_blocks;
    std::size_t m_current = 0; // the block being filled
    std::size_t m_used = 0; // letters used in it
};

}
