// The forms of all records.
#pragma once

#include "editors/frmAsthma.h"
#include "editors/frmAsthmaReg.h"
#include "editors/frmER.h"
#include "editors/frmElder.h"
#include "editors/frmElderView.h"
#include "editors/frmInf.h"
#include "editors/frmPediatric.h"
#include "editors/frmRefusal.h"
#include "editors/frmRepHist.h"
#include "editors/frmTxc.h"
