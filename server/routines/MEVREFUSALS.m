MEVREFUSALS ; Refusals of services: types, reading and saving
 ; ^MEVREF(refusal,0)=patient ^ date ^ locked ^ type ^ item ^ item's name    ^MEVREF(refusal,1)=comment
 ;
GET ; Call: patient, optionally ^ record
 NEW count,dfn,ien,inverse
 SET dfn=$PIECE(param,"^"),ien=$PIECE(param,"^",2),count=0
 IF '$$KNOWN^MEVHOSTCALLS(dfn) SET reply=$$NOPATIENT^MEVHOSTCALLS(dfn) QUIT
 IF ien'="" DO ONE QUIT
 SET inverse=""
 FOR  SET inverse=$ORDER(^MEVREF("AA",dfn,inverse)) QUIT:inverse=""  DO
 . SET ien=""
 . FOR  SET ien=$ORDER(^MEVREF("AA",dfn,inverse,ien)) QUIT:ien=""  DO ADD(ien,"/")
 QUIT
 ;
ONE ; Adds one refusal of this patient
 IF ien'?1N.11N DO NO^MEVSAVE("There is no such refusal.") QUIT
 IF $PIECE($GET(^MEVREF(ien,0)),"^")'=dfn DO NO^MEVSAVE("The refusal "_ien_" does not exist any more.") QUIT
 DO ADD(ien,"|")
 QUIT
 ;
ADD(ien,bar) ; record ^^^ type ^ item ^ item's name ^^^ date ^ locked ^^ comment
 ; The panel's list cuts a piece at its first "|", so there a "/" replaces it.
 NEW node
 SET node=^MEVREF(ien,0),count=count+1
 SET reply(count)=ien_"^^^"_$PIECE(node,"^",4,6)_"^^^"_$PIECE(node,"^",2,3)
 SET reply(count)=reply(count)_"^^"_$TRANSLATE($GET(^MEVREF(ien,1)),"|",bar)
 QUIT
 ;
REFLIST ; Call: a type with a single item; replies the item's number
 NEW line
 SET line=$$TYPE($$UPPER^MEVCODES(param)),reply=$PIECE(line,";",3)
 IF reply="" DO NO^MEVSAVE("There is no single item of this type.")
 QUIT
 ;
SET ; Call: record ^ type ^ item ^ patient ^ date ^ comment
 NEW bad,comment,date,dfn,ien,item,node,type
 SET ien=$PIECE(param,"^"),type=$$TYPE($PIECE(param,"^",2)),item=$PIECE(param,"^",3),dfn=$PIECE(param,"^",4)
 SET comment=$$PLAIN^MEVTEXT($PIECE(param,"^",6),"")
 SET bad="",date=$$PARSE^MEVDATE($PIECE(param,"^",5))\1
 IF '$$KNOWN^MEVHOSTCALLS(dfn) SET reply=$$NOPATIENT^MEVHOSTCALLS(dfn) QUIT
 IF type="" DO NO^MEVSAVE("The refusal's type is not known.") QUIT
 IF '$$EXISTS^MEVFILES($PIECE(type,";",2),item) DO NO^MEVSAVE("The refused item is not known.") QUIT
 IF 'date DO NO^MEVSAVE($$FAULT^MEVDATE($PIECE(param,"^",5),"Enter the date of the refusal as mm/dd/yyyy.")) QUIT
 IF date>$$TODAY^MEVDATE DO NO^MEVSAVE("The refusal cannot be in the future.") QUIT
 IF $$CHARACTERS^MEVCODES(comment)=1 DO NO^MEVSAVE("The comment must be longer than 1 character.") QUIT
 IF $$CHARACTERS^MEVCODES(comment)>200 DO NO^MEVSAVE("The comment is longer than 200 characters.") QUIT
 SET ien=$$TARGET(ien,dfn)
 QUIT:ien=""
 SET node=dfn_"^"_date_"^^"_$PIECE(type,";")_"^"_item_"^"_$$NAME^MEVFILES($PIECE(type,";",2),item)
 IF ien SET ^MEVREF(ien,0)=node,^MEVREF("AA",dfn,$$INVERSE^MEVDATE(date),ien)=""
 ELSE  SET ien=$$FILEAT^MEVFILES("^MEVREF",0,node,dfn,date)
 KILL ^MEVREF(ien,1)
 SET:comment'="" ^MEVREF(ien,1)=comment
 DO CHANGED^MEVSAVE(dfn,"REF")
 QUIT
 ;
TARGET(ien,dfn) ; The refusal to change, removed from the index by date; 0 for a new one; empty if the call was refused
 IF ien="" QUIT 0
 IF '$$MAY^MEVSAVE("^MEVREF",ien,dfn,"refusal") QUIT ""
 DO KEEP^MEVFILES("^MEVREF",ien)
 KILL ^MEVREF("AA",dfn,$$INVERSE^MEVDATE($PIECE(^MEVREF(ien,0),"^",2)),ien)
 QUIT ien
 ;
TYPE(name) ; The line of a type, empty for an unknown one
 NEW index,line
 SET line=""
 FOR index=1:1 SET line=$PIECE($TEXT(TYPES+index),";;",2) QUIT:line=""  QUIT:$PIECE(line,";")=name
 QUIT line
 ;
TYPES ; type;file of the item;the single item, if there is only one
 ;;EKG;9999999.68;1
 ;;EXAM;9999999.15
 ;;IMMUNIZATION;9999999.14
 ;;LAB;60
 ;;MAMMOGRAM;71;1
 ;;MEASUREMENTS;9999999.07
 ;;MEDICATION/DRUG;50
 ;;PAP SMEAR;60;1
 ;;RADIOLOGY EXAM;71
 ;;SKIN TEST;9999999.28
 ;;EDUCATION TOPICS;9999999.09
 ;;
