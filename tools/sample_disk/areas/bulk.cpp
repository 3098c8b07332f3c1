#include "tools/sample_disk/areas.h"
#include "tools/sample_disk/data/growths.h"

#include <string>

namespace SampleDisk {

namespace {

std::string nameOf(const NameForm& form, int number) {
    std::string name(form.before);
    name += std::to_string(number);
    name += form.after;
    return name;
}

/// Lengths as on a real disk: mostly short, none so long that it is offered as a large file. Two of three
/// files stay empty: those take fewer calls to make and cost a walk just as much.
std::int64_t anyLength(Random& random) {
    if (!random.chance(33))
        return 0;
    return random.chance(1) ? random.between(1, 12'000) * 1_KB : random.between(200, 60'000);
}

/// Grows trees in a folder until a number of entries is reached.
class Gardener {
public:
    Gardener(const Growth& growth, std::size_t entries, Random& random)
        : m_growth(growth), m_left(entries), m_random(random) {}

    void fill(Folder& unit) {
        for (int number = 1; m_left > 0; ++number)
            growTree(unit, number, 0);
    }

private:
    void growTree(Folder& parent, int number, int depth) {
        if (!spend())
            return;
        const int ageDays = m_random.between(0, 900);
        Folder folder = parent.folder(nameOf(m_growth.folderName, number), ageDays);
        const int files = m_random.between(m_growth.files.low, m_growth.files.high);
        for (int i = 1; i <= files && spend(); ++i) {
            const NameForm& form = m_growth.fileNames[m_random.next() % m_growth.fileNames.size()];
            folder.file(nameOf(form, i), anyLength(m_random), ageDays + m_random.between(0, 60));
        }
        const Range& folders = m_growth.folders;
        const int children = depth < m_growth.depth ? m_random.between(folders.low, folders.high) : 0;
        for (int i = 1; i <= children; ++i)
            growTree(folder, i, depth + 1);
    }

    bool spend() {
        if (m_left == 0)
            return false;
        --m_left;
        return true;
    }

    const Growth& m_growth;
    std::size_t m_left;
    Random& m_random;
};

void grow(Folder& root, const Growth& growth, std::size_t entries, Random& random) {
    const std::size_t perUnit = entries / growth.units.size();
    if (perUnit == 0)
        return;
    Folder place = root.folder(growth.place, 0);
    for (const std::string_view unit : growth.units) {
        Folder folder = place.folder(unit, random.between(0, 300));
        Gardener(growth, perUnit, random).fill(folder);
    }
}

void dig(Folder& folder, int levels) {
    if (levels == 0)
        return;
    folder.file("note.txt", 1_KB, 1'200);
    Folder deeper = folder.folder("older backup", 1'200);
    dig(deeper, levels - 1);
}

} // namespace

void makeBulk(DiskWriter& writer, std::size_t entries, Random& random) {
    if (entries <= writer.entryCount())
        return;
    const std::size_t missing = entries - writer.entryCount();
    Folder root = writer.root();
    for (const Growth& growth : growths)
        grow(root, growth, missing * static_cast<std::size_t>(growth.percent) / 100, random);
    if (missing > std::size_t{100} * deepestLevel) {
        Folder deep = root.folder(deepPlace, 1'200);
        dig(deep, deepestLevel);
    }
    Folder crowded = root.folder(crowdedPlace, 15);
    for (int number = 1; writer.entryCount() < entries; ++number)
        crowded.file(nameOf({"Message ", ".eml"}, number), anyLength(random), 15 + random.between(0, 2'000));
}

} // namespace SampleDisk
