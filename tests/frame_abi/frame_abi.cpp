// Every name of the export list, called through the frame that the list states, from all four alignments that a
// stack of 32-bit slots can have.
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tavik/tavik.h"
#include "tests/support/module.h"

namespace {

struct FrameCall {
    void *function;
    const uint32_t *slots;
    uint32_t slot_count;
    uint32_t stack_offset;
    uint32_t ecx_in;
    uint32_t mxcsr_in;
    uint32_t control_word_in;
    uint32_t removed;
    uint32_t ebx, esi, edi, ebp;
    uint32_t eflags;
    uint32_t mxcsr;
    std::array<uint32_t, 7> x87;
};

extern "C" int32_t call_through_frame(FrameCall *call);

// Arguments that suit any export of small sizes: separate buffers, small counts, fractions.
class Arguments {
  public:
    template <class Argument> void add() {
        if constexpr (std::is_same_v<Argument, FILE *>) {
            // An empty stream; the export closes it, or the end of this program.
            slots.push_back(reinterpret_cast<uint32_t>(std::fopen("NUL", "rb")));
        } else if constexpr (std::is_same_v<Argument, const char *>) {
            slots.push_back(reinterpret_cast<uint32_t>("no file has this name"));
        } else if constexpr (std::is_pointer_v<Argument>) {
            // Aligned as the block copy wants it.
            constexpr std::size_t bytes = 16384;
            // Records hold pointers of their own; one of zeros has no size, so that they are not followed. An integer
            // that an export reads and writes may be a size too.
            constexpr bool holds_size =
                std::is_class_v<std::remove_pointer_t<Argument>> || std::is_same_v<Argument, int32_t *>;
            auto &buffer = buffers.emplace_back(bytes + 16, holds_size ? uint8_t{0} : uint8_t{1});
            slots.push_back((reinterpret_cast<uint32_t>(buffer.data()) + 15) & ~15U);
        } else if constexpr (std::is_same_v<Argument, float>) {
            slots.push_back(std::bit_cast<uint32_t>(0.5F));
        } else if constexpr (std::is_same_v<Argument, double>) {
            const auto halves = std::bit_cast<std::array<uint32_t, 2>>(0.5);
            slots.insert(slots.end(), halves.begin(), halves.end());
        } else {
            static_assert(sizeof(Argument) == 4, "an argument takes one slot");
            slots.push_back(4);
        }
    }
    std::vector<uint32_t> slots;

  private:
    std::vector<std::vector<uint8_t>> buffers;
};

struct FrameCase {
    const char *name;
    uint32_t listed_bytes;
    void (*add_arguments)(Arguments &arguments);
    bool returns_float;
    bool first_in_register;
};

template <class Function> struct Frame;
template <class Result, class... Argument> struct Frame<Result __stdcall(Argument...)> {
    static void add_arguments(Arguments &arguments) { (arguments.add<Argument>(), ...); }
    static constexpr bool returns_float = std::is_floating_point_v<Result>;
    static constexpr bool first_in_register = false;
};
template <class Result> struct Frame<Result __fastcall(int32_t)> : Frame<Result __stdcall(int32_t)> {
    static constexpr bool first_in_register = true;
};

const FrameCase cases[] = {
#define FRAME_CASE(name, bytes)                                                                                        \
    {#name, bytes, Frame<decltype(name)>::add_arguments, Frame<decltype(name)>::returns_float,                         \
     Frame<decltype(name)>::first_in_register},
#include "frame_cases.inc"
};

void PrintTo(const FrameCase &frame_case, std::ostream *out) { *out << frame_case.name; }

const tavik_test::Module &library() {
    static const tavik_test::Module module("tavik.dll");
    return module;
}

class FrameAbi : public testing::TestWithParam<FrameCase> {};

TEST_P(FrameAbi, LeavesTheHostsStateAsItWas) {
    ASSERT_TRUE(library().loaded());
    const FrameCase &c = GetParam();
    void *function = library().symbol(c.name);
    ASSERT_NE(function, nullptr) << "the module does not export the name";
    for (const uint32_t offset : {0U, 4U, 8U, 12U}) {
        SCOPED_TRACE(offset);
        Arguments arguments;
        c.add_arguments(arguments);
        ASSERT_EQ(arguments.slots.size() * 4, c.listed_bytes) << "the header and the export list differ";
        FrameCall call = {};
        call.function = function;
        call.slots = arguments.slots.data();
        call.slot_count = c.first_in_register ? 0 : static_cast<uint32_t>(arguments.slots.size());
        call.ecx_in = arguments.slots.empty() ? 0 : arguments.slots.front();
        call.stack_offset = offset;
        // Other than any compiler's defaults: flushes denormals, double precision.
        call.mxcsr_in = 0x9FC0;
        call.control_word_in = 0x027F;
        call_through_frame(&call);

        EXPECT_EQ(call.removed, call.slot_count * 4);
        EXPECT_EQ(call.ebx, 0x5A5A0001U);
        EXPECT_EQ(call.esi, 0x5A5A0002U);
        EXPECT_EQ(call.edi, 0x5A5A0003U);
        EXPECT_EQ(call.ebp, 0x5A5A0004U);
        constexpr uint32_t direction_flag = 0x400;
        EXPECT_EQ(call.eflags & direction_flag, 0U);
        constexpr uint32_t mxcsr_control_bits = 0xFFC0;
        EXPECT_EQ(call.mxcsr & mxcsr_control_bits, call.mxcsr_in);
        EXPECT_EQ(call.x87[0] & 0xFFFFU, call.control_word_in);
        // Two bits for each x87 register, 11 when it is empty. MMX code without EMMS leaves them 00.
        int registers_in_use = 0;
        for (uint32_t tags = call.x87[2] & 0xFFFFU, i = 0; i < 8; ++i, tags >>= 2) registers_in_use += (tags & 3) != 3;
        EXPECT_EQ(registers_in_use, c.returns_float ? 1 : 0);
    }
}

std::string frame_case_name(const testing::TestParamInfo<FrameCase> &info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(ExportList, FrameAbi, testing::ValuesIn(cases), frame_case_name);

// The thunk itself notices a function that breaks the frame.
void __stdcall removes_eight(int32_t, int32_t) {}
void __stdcall leaves_a_float_and_a_flag(int32_t) { asm volatile("fld1\n\tstd" ::: "memory"); }

TEST(FrameThunk, SeesWhatBreaksTheFrame) {
    const std::array<uint32_t, 2> slots = {1, 2};
    FrameCall call = {};
    call.slots = slots.data();
    call.mxcsr_in = 0x1F80;
    call.control_word_in = 0x037F;
    call.slot_count = 1;
    call.function = reinterpret_cast<void *>(removes_eight);
    call_through_frame(&call);
    EXPECT_EQ(call.removed, 8U);
    call.function = reinterpret_cast<void *>(leaves_a_float_and_a_flag);
    call_through_frame(&call);
    EXPECT_EQ(call.removed, 4U);
    EXPECT_NE(call.x87[2] & 0xFFFFU, 0xFFFFU);
    EXPECT_NE(call.eflags & 0x400U, 0U);
}

// The module's own tables, read from its image in memory.
class Image {
  public:
    explicit Image(HMODULE module) : base(reinterpret_cast<const uint8_t *>(module)) {
        headers = at<IMAGE_NT_HEADERS32>(static_cast<uint32_t>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
    }
    template <class Record> const Record *at(uint32_t offset) const {
        return reinterpret_cast<const Record *>(base + offset);
    }
    template <class Record> const Record *directory(std::size_t index) const {
        return at<Record>(headers->OptionalHeader.DataDirectory[index].VirtualAddress);
    }
    uint16_t characteristics() const { return headers->OptionalHeader.DllCharacteristics; }

  private:
    const uint8_t *base;
    const IMAGE_NT_HEADERS32 *headers;
};

TEST(Module, ExportsTheListAndNothingElse) {
    ASSERT_TRUE(library().loaded());
    const Image image(library().base());
    const auto *exports = image.directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
    const auto *names = image.at<uint32_t>(exports->AddressOfNames);
    std::set<std::string> exported;
    for (uint32_t i = 0; i < exports->NumberOfNames; ++i) exported.insert(image.at<char>(names[i]));
    std::set<std::string> listed;
    for (const FrameCase &c : cases) listed.insert(c.name);
    EXPECT_EQ(exported, listed);
    EXPECT_EQ(exports->NumberOfFunctions, listed.size());
}

TEST(Module, HasOneGreyRoutineUnderTwoNames) {
    ASSERT_TRUE(library().loaded());
    EXPECT_EQ(library().symbol("xColorToGrayscale"), library().symbol("xColorToGrayChannel"));
}

TEST(Module, ImportsTheSystemOnly) {
    ASSERT_TRUE(library().loaded());
    const Image image(library().base());
    const std::set<std::string_view> allowed = {"KERNEL32.dll", "GDI32.dll", "msvcrt.dll"};
    const auto *import = image.directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (; import->Name != 0; ++import)
        EXPECT_TRUE(allowed.contains(image.at<char>(import->Name))) << image.at<char>(import->Name);
}

TEST(Module, IsRelocatableProtectedAndVersioned) {
    ASSERT_TRUE(library().loaded());
    const Image image(library().base());
    constexpr uint16_t wanted = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE | IMAGE_DLLCHARACTERISTICS_NX_COMPAT;
    EXPECT_EQ(image.characteristics() & wanted, wanted);
    EXPECT_NE(FindResourceA(library().base(), MAKEINTRESOURCEA(VS_VERSION_INFO), RT_VERSION), nullptr);
}

} // namespace
