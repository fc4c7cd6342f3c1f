// SPDX-License-Identifier: MIT
// Changes descriptions as trees for libFuzzer: bytes changed at random seldom leave an XML file, and hardly ever
// make a node lead to another one.
#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

/// libFuzzer's own change of bytes in place. \return the new size
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *bytes, std::size_t size, std::size_t maximum);

namespace {

class Mutation
{
public:
    Mutation(std::string_view xml, unsigned seed) : random{seed}
    {
        if (document.load_buffer(xml.data(), xml.size()))
            elements = document.select_nodes("//*");
    }

    /// Whether there is a tree to change.
    bool isPossible() const { return elements.size() > 1; }

    std::string result()
    {
        for (std::size_t changes = 1 + random() % 3; changes > 0; --changes)
            change(elements[1 + random() % (elements.size() - 1)].node());
        std::ostringstream text;
        document.save(text, "", pugi::format_raw | pugi::format_no_declaration);
        return text.str();
    }

private:
    pugi::xml_node any() { return elements[random() % elements.size()].node(); }

    /// The root is never \p element, so it stays.
    void change(pugi::xml_node element)
    {
        switch (random() % 8) {
        case 0:
            any().append_copy(element);
            break;
        case 1:
            copyUnderNewName(element, any());
            break;
        case 2:
            element.set_name(any().name());
            break;
        case 3:
            element.text().set(numbers[random() % numbers.size()]);
            break;
        case 4:
            element.text().set(mutated(element.text().get()).c_str());
            break;
        case 5:
            element.set_name(any().name());
            [[fallthrough]];
        case 6:
            element.text().set(any().attribute("Name").value()); // leads to a node, if the tag is a reference
            break;
        default:
            element.set_name("Removed");
        }
    }

    /// A copy that keeps the name makes a doubled one, which hides both nodes.
    void copyUnderNewName(pugi::xml_node place, pugi::xml_node original)
    {
        pugi::xml_node copy = place.parent().insert_copy_before(original, place);
        if (pugi::xml_attribute name = copy.attribute("Name"))
            name.set_value((std::string{name.value()} + std::to_string(random() % 10)).c_str());
    }

    static std::string mutated(std::string text)
    {
        const std::size_t size = text.size();
        text.resize(size + 64);
        text.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t *>(text.data()), size, text.size()));
        return text;
    }

    static constexpr std::array numbers{"0", "1", "2", "4", "8", "63", "64", "1.5", "0x10000"};

    std::minstd_rand random;
    pugi::xml_document document;
    pugi::xpath_node_set elements;
};

} // namespace

/// Called by libFuzzer instead of its own change. Half of the changes are left to that one.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *bytes, std::size_t size, std::size_t maximum,
                                               unsigned seed)
{
    const std::string_view input{reinterpret_cast<const char *>(bytes), size};
    const std::size_t registers = std::min(input.rfind("\nregisters:"), size);
    Mutation mutation{input.substr(0, registers), seed};
    if (seed % 2 == 0 || !mutation.isPossible())
        return LLVMFuzzerMutate(bytes, size, maximum);
    const std::string changed = mutation.result() + std::string{input.substr(registers)};
    if (changed.size() > maximum)
        return LLVMFuzzerMutate(bytes, size, maximum);
    std::memcpy(bytes, changed.data(), changed.size());
    return changed.size();
}
