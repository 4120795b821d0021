MEVREADRECORDS ; Reads records for the panel's list and for the editors
 ; Lists are sorted latest first. Parameter of the lists: a patient, or "^" and one record.
 ; Nodes (n,0) of the visit files: patient ^ visit ^ locked ^ the record's own pieces.
 ;
REP ; Call: patient, optionally ^^1; one line, empty if there is no record
 NEW dfn,node
 SET dfn=$PIECE(param,"^")
 IF '$$KNOWN^MEVHOSTCALLS(dfn) SET reply=$$NOPATIENT^MEVHOSTCALLS(dfn) QUIT
 SET node=$GET(^MEVREP(dfn,0))
 QUIT:node=""
 SET reply=$PIECE(node,"^",2)_"^"_$$SLASHED^MEVDATE($PIECE(node,"^",3))_"^"_$$TEXT^MEVCODES("METHOD",$PIECE(node,"^",4))
 SET reply=reply_"^"_$$SLASHED^MEVDATE($PIECE(node,"^",5))_"^"_$$TEXT^MEVCODES("ESTIMATE",$PIECE(node,"^",6))
 SET reply=reply_"^"_$$SLASHED^MEVDATE($PIECE(node,"^",7))
 QUIT
 ;
BMSR ; Call: patient; one line, empty if there is no record
 NEW index,mother,node
 IF '$$KNOWN^MEVHOSTCALLS(param) SET reply=$$NOPATIENT^MEVHOSTCALLS(param) QUIT
 SET node=$GET(^MEVBMSR(param,0))
 QUIT:node=""
 SET mother=$PIECE(node,"^",10)
 FOR index=2:1:9 SET $PIECE(node,"^",index)=$$SHOWN^MEVNUMBER($PIECE(node,"^",index))
 SET reply=$PIECE(node,"^",2,5)_"^^^^^^"_$PIECE(node,"^",6,9)
 SET reply=reply_"^"_$SELECT(mother:$$NAME^MEVFILES(2,mother)_"|"_mother,1:"")
 QUIT
 ;
FEEDINGLINE(node) ;
 QUIT $$PAIR^MEVCODES("FEEDING",$PIECE(node,"^",4))
 ;
FUNCTIONLINE(node) ; 14 items: twelve levels, change of status, caregiver
 ; Reads codes itself: a list may have thousands of these lines, and a call for each item would double its time.
 NEW index,line
 SET line=""
 FOR index=4:1:15 SET line=line_$GET(codes("LEVEL",$PIECE(node,"^",index)))_"^"
 QUIT line_$GET(codes("TREND",$PIECE(node,"^",16)))_"^"_$GET(codes("YESNO",$PIECE(node,"^",17)))
 ;
ASTHMALINE(node) ; severity, three numbers, four answers
 NEW index,line
 SET line=$$PAIR^MEVCODES("SEVERITY",$PIECE(node,"^",4))_"^"_$PIECE(node,"^",5,7)
 FOR index=8:1:11 SET line=line_"^"_$$TEXT^MEVCODES("YESNO",$PIECE(node,"^",index))
 QUIT line
 ;
CONTRACTLINE(node) ; type, date initiated, provider
 NEW provider
 SET provider=$PIECE(node,"^",6)
 SET:provider provider=$$NAME^MEVFILES(200,provider)_"|"_provider
 QUIT $$PAIR^MEVCODES("CONTRACT",$PIECE(node,"^",4))_"^"_$$SLASHED^MEVDATE($PIECE(node,"^",5))_"^"_provider
 ;
EMERGENCYLINE(node) ; urgency, arrival, other, entered by, informant, notified, disposition, other, departure,
 ; departure against advice, condition, transfer
 NEW line,transfer
 SET line=$$PAIR^MEVCODES("URGENCY",$PIECE(node,"^",4))
 SET line=line_"^"_$$PAIR^MEVCODES("ARRIVAL",$PIECE(node,"^",5))_"^"_$PIECE(node,"^",6)
 SET line=line_"^"_$$PAIR^MEVCODES("ENTERED",$PIECE(node,"^",7))_"^"_$PIECE(node,"^",8)
 SET line=line_"^"_$$PAIR^MEVCODES("NOTIFIED",$PIECE(node,"^",9))
 SET line=line_"^"_$$PAIR^MEVCODES("DISPOSITION",$PIECE(node,"^",10))_"^"_$PIECE(node,"^",11)
 SET line=line_"^"_$$TIMED^MEVDATE($PIECE(node,"^",12))_"^"_$$TIMED^MEVDATE($PIECE(node,"^",13))
 SET line=line_"^"_$PIECE(node,"^",14)
 SET transfer=$PIECE(node,"^",15)
 QUIT line_"^"_$SELECT(transfer="":"",1:$$NAME^MEVFILES($SELECT(transfer["LOC":4,1:9999999.11),+transfer)_"|"_transfer)
 ;
LIST ; Call: all records of a patient, or one record; the call's name states the kind
 NEW count,dfn,ien,inverse,place,root
 SET root="^"_$PIECE(name," "),dfn=$PIECE(param,"^"),ien=$PIECE(param,"^",2),count=0
 IF root="^MEVVELD" DO NEED^MEVCODES("LEVEL"),NEED^MEVCODES("TREND"),NEED^MEVCODES("YESNO")
 IF dfn="",ien'="" DO ONE QUIT
 IF '$$KNOWN^MEVHOSTCALLS(dfn) SET reply=$$NOPATIENT^MEVHOSTCALLS(dfn) QUIT
 ; First the index, then the records in the order of their numbers: the engine finds a neighbour without a search.
 SET inverse=""
 FOR  SET inverse=$ORDER(@root@("AA",dfn,inverse)) QUIT:inverse=""  DO
 . SET ien=""
 . FOR  SET ien=$ORDER(@root@("AA",dfn,inverse,ien)) QUIT:ien=""  SET count=count+1,place(ien)=count
 FOR  SET ien=$ORDER(place(ien)) QUIT:ien=""  DO ADD(ien,place(ien))
 QUIT
 ;
ONE ; One record by its number
 IF ien'?1N.11N SET reply="-1^There is no such record." QUIT
 IF '$DATA(@root@(ien,0)) SET reply="-1^The record "_ien_" does not exist any more." QUIT
 DO ADD(ien,1)
 QUIT
 ;
ADD(ien,place) ; The line at a place of the reply: record ^ locked ^ visit date|visit ^ the record's own pieces
 NEW date,node,visit
 SET node=@root@(ien,0),visit=$PIECE(node,"^",2),date=$PIECE($GET(^MEVVST(+visit,0)),"^")
 ; Intended: contracts show their visit's date as mm/dd/yyyy@hh:mm, all other kinds as a FileMan date.
 IF root="^MEVVTXC",date SET date=$$TIMED^MEVDATE(date)
 SET reply(place)=ien_"^"_$PIECE(node,"^",3)_"^"_date_"|"_visit_"^"_$$LINE(root,node)
 QUIT
 ;
LINE(root,node) ; The record's own pieces, formatted
 IF root="^MEVVELD" QUIT $$FUNCTIONLINE(node)
 IF root="^MEVVAST" QUIT $$ASTHMALINE(node)
 IF root="^MEVVTXC" QUIT $$CONTRACTLINE(node)
 IF root="^MEVVER" QUIT $$EMERGENCYLINE(node)
 QUIT $$FEEDINGLINE(node)
