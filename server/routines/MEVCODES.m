MEVCODES ; Codes of the record files and their texts
 ;
TEXT(set,code) ; The text of a code, empty for an unknown code. The process caches the sets in codes.
 IF code="" QUIT ""
 IF '$DATA(codes(set)) DO LOAD(set)
 QUIT $GET(codes(set,code))
 ;
NEED(set) ; Loads a set unless the process has it
 IF '$DATA(codes(set)) DO LOAD(set)
 QUIT
 ;
LOAD(set) ; Loads a set into codes(set,code)=text
 NEW index,list
 SET list=$$LISTED^MEVTEXT(set,"MEVCODES"),codes(set)=""
 FOR index=1:1:$LENGTH(list,";") SET codes(set,$PIECE($PIECE(list,";",index),":"))=$PIECE($PIECE(list,";",index),":",2)
 QUIT
 ;
PAIR(set,code) ; text|code, empty for an empty code
 IF code="" QUIT ""
 QUIT $$TEXT(set,code)_"|"_code
 ;
CODE(set,text) ; The code of a text, ignoring case; empty for an unknown text
 NEW code,upper
 IF text="" QUIT ""
 IF '$DATA(codes(set)) DO LOAD(set)
 SET code="",upper=$$UPPER(text)
 FOR  SET code=$ORDER(codes(set,code)) QUIT:code=""  QUIT:codes(set,code)=upper
 QUIT code
 ;
UPPER(text) ; The text with a to z in upper case
 QUIT $TRANSLATE(text,"abcdefghijklmnopqrstuvwxyz","ABCDEFGHIJKLMNOPQRSTUVWXYZ")
 ;
CHARACTERS(text) ; The number of characters in a UTF-8 text: continuation bytes do not count
 NEW byte
 IF '$DATA(codes(0,"REST")) DO
 . SET codes(0,"REST")=""
 . FOR byte=128:1:191 SET codes(0,"REST")=codes(0,"REST")_$CHAR(byte)
 QUIT $LENGTH($TRANSLATE(text,codes(0,"REST")))
 ;
FEEDING ;
 ;;1:EXCLUSIVE BREASTFEEDING;2:MOSTLY BREASTFEEDING;3:1/2 BREAST & 1/2 FORMULA;4:MOSTLY FORMULA;5:FORMULA ONLY
LEVEL ;
 ;;I:INDEPENDENT;N:NEEDS HELP;T:TOTALLY DEPENDENT
TREND ;
 ;;S:SAME;I:IMPROVEMENT;D:DECLINE
YESNO ;
 ;;Y:YES;N:NO
SEVERITY ;
 ;;1:MILD INTERMITTENT;2:MILD PERSISTENT;3:MODERATE PERSISTENT;4:SEVERE PERSISTENT
CONTRACT ;
 ;;P:PAIN;M:MENTAL HEALTH
METHOD ;
 ;;1:EDUCATION ONLY;2:ORAL CONTRACEPTIVES;3:IUD;4:SURGICAL STERILIZATION;5:BARRIER METHODS
 ;;6:PARTNER STERILIZED;7:NATURAL TECHNIQUES;8:MENOPAUSE;9:NONE;10:OTHER
 ;;11:HORMONAL IMPLANT;12:HORMONE INJECTION;13:ABSTINENCE
ESTIMATE ;
 ;;1:UNKNOWN METHOD;2:SONOGRAM;3:DATES;4:CLINICAL PARAMETERS
REGISTRY ;
 ;;A:ACTIVE;I:INACTIVE
URGENCY ;
 ;;E:EMERGENT;U:URGENT;N:NON-EMERGENT
ARRIVAL ;
 ;;A:AMBULANCE;P:POLICE;POV:POV;T:TAXI;W:WALKED;R:AIR;O:OTHER
ENTERED ;
 ;;A:AMBULATORY;W:WHEEL CHAIR;S:STRETCHER;C:CARRIED
NOTIFIED ;
 ;;R:RELATIVE;P:POLICE;C:CORONER
DISPOSITION ;
 ;;D:DISCHARGED;A:ADMITTED;T:TRANSFERRED;1:AMA / PATIENT LEFT;M:MEDIVAC TRANSFER;L:LIFEGUARD
 ;;E:DIED / EXPIRED;O:OTHER
