// The record kinds the load fuzzer reads: the first input byte picks one, the
// rest is the archive stream.
#pragma once

enum FuzzRecord : unsigned char {
    kFuzzRoute,
    kFuzzRouteEarlier,
    kFuzzDblArray,
    kFuzzIntArray,
    kFuzzPointArray,
    kFuzzLineArray,
    kFuzzPointVector,
    kFuzzMatrix,
    kFuzzProps,
    kFuzzRecordKinds
};
