$mev_native/digest.so
sha256: gtm_status_t sha256(I:gtm_string_t *, O:gtm_char_t *[65])
