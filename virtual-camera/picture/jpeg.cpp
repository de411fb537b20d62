// Compresses a frame, whose planes already have the form that JPEG stores.
#include "virtual-camera/picture/jpeg.h"

#include <cstdio>
#include <cstdlib>
// It needs the headers above.
#include <jpeglib.h>

namespace camera::picture {
namespace {

void describe(jpeg_compress_struct* jpeg, const Frame& frame, int quality) {
  jpeg->image_width = static_cast<JDIMENSION>(frame.width);
  jpeg->image_height = static_cast<JDIMENSION>(frame.height);
  jpeg->input_components = 3;
  jpeg->in_color_space = JCS_YCbCr;
  jpeg_set_defaults(jpeg);
  jpeg_set_quality(jpeg, quality, TRUE);
  jpeg->raw_data_in = TRUE;
  jpeg->dct_method = JDCT_IFAST;
  jpeg->comp_info[0].h_samp_factor = jpeg->comp_info[0].v_samp_factor = 2;
}

}  // namespace

std::string toJpeg(Frame& frame, int quality) {
  jpeg_compress_struct jpeg{};
  jpeg_error_mgr errors{};
  jpeg.err = jpeg_std_error(&errors);  // an error ends the process
  jpeg_create_compress(&jpeg);
  unsigned char* data = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&jpeg, &data, &size);
  describe(&jpeg, frame, quality);
  jpeg_start_compress(&jpeg, TRUE);
  constexpr int kLines = 16;  // at a time
  for (int top = 0; top < frame.rows; top += kLines) {
    JSAMPROW y[kLines];
    JSAMPROW cb[kLines / 2];
    JSAMPROW cr[kLines / 2];
    for (int i = 0; i < kLines; ++i) y[i] = frame.row(top + i);
    for (int i = 0; i < kLines / 2; ++i) {
      cb[i] = frame.colorRow(frame.cb, top / 2 + i);
      cr[i] = frame.colorRow(frame.cr, top / 2 + i);
    }
    JSAMPARRAY planes[] = {y, cb, cr};
    jpeg_write_raw_data(&jpeg, planes, kLines);
  }
  jpeg_finish_compress(&jpeg);
  std::string text(reinterpret_cast<const char*>(data), size);
  jpeg_destroy_compress(&jpeg);
  std::free(data);
  return text;
}

}  // namespace camera::picture
