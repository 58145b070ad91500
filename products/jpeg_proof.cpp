#include "products/jpeg_proof.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdio>
// The library's own order: <cstdio> first, and the numbers of its warnings depend on the version told before.
// clang-format off
#include <jpeglib.h>
#include <jerror.h>
// clang-format on

namespace goodsbook::picture {

namespace {

constexpr int longestFilling = 15;  // bytes: what brings a length to a multiple of 16
constexpr int leastHole = 64;       // bytes

struct Judge : jpeg_error_mgr {
  std::jmp_buf damaged;
};

[[noreturn]] void stop(j_common_ptr info) {
  std::longjmp(static_cast<Judge*>(info->err)->damaged, 1);
}

// A few bytes too many: between two tables of the head, or zeros before the end. Others behind the scan look
// the same as a hole in it, behind which the decoder found its way again: they count as damage.
bool isFilling(const jpeg_decompress_struct& info) {
  const int skipped = info.err->msg_parm.i[0];
  const int marker = info.err->msg_parm.i[1];
  if (skipped > longestFilling) return false;
  if (info.input_scan_number == 0) return true;
  const JOCTET* behind = info.src->next_input_byte;
  return marker == JPEG_EOI && std::all_of(behind - skipped, behind, [](JOCTET byte) { return byte == 0; });
}

bool isHarmless(const jpeg_decompress_struct& info) {
  switch (info.err->msg_code) {
    case JWRN_JFIF_MAJOR:
    case JWRN_ADOBE_XFORM:
    case JWRN_NOT_SEQUENTIAL:  // numbers that a sequential scan has no use for: some phones leave them 0
      return true;
    case JWRN_EXTRANEOUS_DATA:
      return isFilling(info);
    default:
      return false;
  }
}

// Whether a lost part of the file was filled with zeros: they may read as just as many blocks as were lost.
// Where the shortest code is a coefficient's, so many zeros are blocks full of the same one, which is no
// picture; elsewhere they may be a plain ground. To be asked when the first scan begins.
bool hasHole(const jpeg_decompress_struct& info) {
  const bool oneScan = info.comps_in_scan == info.num_components;
  if (info.progressive_mode || info.arith_code || !oneScan) return false;
  const int table = info.cur_comp_info[0]->ac_tbl_no;  // not yet checked
  const JHUFF_TBL* codes = table < NUM_HUFF_TBLS ? info.ac_huff_tbl_ptrs[table] : nullptr;
  const bool coefficient = codes != nullptr && (codes->huffval[0] & 0x0f) != 0;
  if (!coefficient) return false;
  const JOCTET* begin = info.src->next_input_byte;
  const JOCTET* behind = begin + info.src->bytes_in_buffer;
  constexpr std::array<JOCTET, 2> endMarker{0xff, JPEG_EOI};
  const JOCTET* end = std::search(begin, behind, endMarker.begin(), endMarker.end());
  return std::search_n(begin, end, leastHole, JOCTET{0}) != end;
}

void weigh(j_common_ptr info, int level) {
  const bool warning = level < 0;
  if (warning && !isHarmless(*reinterpret_cast<j_decompress_ptr>(info))) stop(info);
}

}  // namespace

bool isWholeJpeg(const QByteArray& file) {
  jpeg_decompress_struct info{};
  Judge judge{};
  info.err = jpeg_std_error(&judge);
  judge.error_exit = stop;
  judge.emit_message = weigh;
  // Nothing below has a destructor: a jump leaves no memory behind.
  if (setjmp(judge.damaged) != 0) {
    jpeg_destroy_decompress(&info);
    return false;
  }
  jpeg_create_decompress(&info);
  jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(file.constData()),
               static_cast<unsigned long>(file.size()));
  jpeg_read_header(&info, TRUE);
  if (hasHole(info)) stop(reinterpret_cast<j_common_ptr>(&info));
  // The whole file is read, but only the mean colours of its blocks are made, row by row, in the colours as
  // they are stored: CMYK cannot be converted here.
  info.out_color_space = info.jpeg_color_space;
  info.scale_num = 1;
  info.scale_denom = DCTSIZE;
  jpeg_start_decompress(&info);
  const JDIMENSION width = info.output_width * static_cast<JDIMENSION>(info.output_components);
  JSAMPARRAY row = info.mem->alloc_sarray(reinterpret_cast<j_common_ptr>(&info), JPOOL_IMAGE, width, 1);
  while (info.output_scanline < info.output_height) jpeg_read_scanlines(&info, row, 1);
  jpeg_finish_decompress(&info);
  jpeg_destroy_decompress(&info);
  return true;
}

}  // namespace goodsbook::picture
