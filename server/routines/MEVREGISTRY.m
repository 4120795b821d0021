MEVREGISTRY ; The asthma registry: one entry a patient, with a comment of several lines
 ; ^MEVREG(patient,0)=patient ^ status ^ last visit ^ date due ^ next appointment ^ manager
 ; ^MEVREG(patient,1)=comment
 ;
GETREG ; Call: patient; one line, empty for a patient who is not in the registry
 NEW index,manager,node
 IF '$$KNOWN^MEVHOSTCALLS(param) SET reply=$$NOPATIENT^MEVHOSTCALLS(param) QUIT
 SET node=$GET(^MEVREG(param,0))
 QUIT:node=""
 SET reply=param_"^"_$$TEXT^MEVCODES("REGISTRY",$PIECE(node,"^",2))_"|"_$PIECE(node,"^",2),manager=$PIECE(node,"^",6)
 FOR index=3:1:5 SET reply=reply_"^"_$$SLASHED^MEVDATE($PIECE(node,"^",index))
 SET reply=reply_"^"_$SELECT(manager:$$NAME^MEVFILES(200,manager)_"|"_manager,1:"")
 QUIT
 ;
GETNOTE ; Call: patient; the comment's lines
 NEW index,note
 IF '$$KNOWN^MEVHOSTCALLS(param) SET reply=$$NOPATIENT^MEVHOSTCALLS(param) QUIT
 SET note=$GET(^MEVREG(param,1))
 QUIT:note=""
 FOR index=1:1:$LENGTH(note,$CHAR(13,10)) SET reply(index)=$PIECE(note,$CHAR(13,10),index)
 QUIT
 ;
SETREG ; Call: patient ^ A or I [^ last visit ^ date due ^ next appointment ^ manager ^ comment]
 NEW comment,dfn,node,status
 SET dfn=$PIECE(param,"^"),status=$PIECE(param,"^",2),comment=$$PLAIN^MEVTEXT($PIECE(param,"^",7),$CHAR(13,10))
 SET reply=$$REFUSED($LENGTH(param,"^")=2&(status="I"))
 QUIT:reply'=""
 IF '$$KNOWN^MEVHOSTCALLS(dfn) SET reply=$$NOPATIENT^MEVHOSTCALLS(dfn) QUIT
 IF status'?1(1"A",1"I") DO NO^MEVSAVE("The registry status must be A or I.") QUIT
 IF '$DATA(^MEVREG(dfn,0)),status="I" SET reply=1 QUIT
 SET node=$GET(^MEVREG(dfn,0),dfn),$PIECE(node,"^",2)=status
 IF $LENGTH(param,"^")>2 SET node=$$ENTRY(node) QUIT:node=""
 DO PUT^MEVSAVE("^MEVREG",dfn,node)
 IF $LENGTH(param,"^")>2 SET ^MEVREG(dfn,1)=comment
 DO CHANGED^MEVSAVE(dfn,"VAST")
 QUIT
 ;
REFUSED(leaving) ; The error reply, else empty. Inactivating, as after deleting an asthma record, needs no registry key.
 IF $$HOLDS^MEVKEYS("QASZMENU") QUIT ""
 IF leaving,$$REFUSED^MEVRIGHTS("VAST")="" QUIT ""
 QUIT "-1^You may not change the asthma registry."
 ;
ENTRY(node) ; The node with the saved dates and manager; empty after a refusal
 ; An empty manager keeps the former one, because the editor sends only a manager that the user looked up there.
 NEW bad,date,index,manager
 SET bad="",manager=$PIECE(param,"^",6)
 FOR index=3:1:5 DO
 . SET date=$PIECE(param,"^",index),bad=$$BADDATE^MEVSAVE(date,bad)
 . SET $PIECE(node,"^",index)=$SELECT(date="":"",1:$$PARSE^MEVDATE(date)\1)
 IF bad'="" DO NO^MEVSAVE(bad) QUIT ""
 IF manager'="",'$$EXISTS^MEVFILES(200,manager) DO NO^MEVSAVE("The case manager is not known.") QUIT ""
 IF $$CHARACTERS^MEVCODES(comment)>4000 DO NO^MEVSAVE("The comment is longer than 4,000 characters.") QUIT ""
 SET:manager'="" $PIECE(node,"^",6)=manager
 QUIT node
