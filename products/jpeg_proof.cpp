#include "products/jpeg_proof.h"

#include <algorithm>
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
