MEVDELETE ; Deletes records after checking the user's rights; the audit keeps them. The call's name states the kind.
 ;
ONLY ; Call: patient. For kinds with one record a patient.
 NEW kind,root
 SET root="^"_$PIECE(name," "),kind=$EXTRACT(root,5,9),reply=$$REFUSED^MEVRIGHTS(kind)
 QUIT:reply'=""
 IF '$$KNOWN^MEVHOSTCALLS(param) SET reply=$$NOPATIENT^MEVHOSTCALLS(param) QUIT
 IF '$DATA(@root@(param,0)) DO NO^MEVSAVE("The record does not exist any more.") QUIT
 DO REMOVE^MEVFILES(root,param),CHANGED^MEVSAVE(param,kind)
 QUIT
 ;
RECORD ; Call: record
 NEW kind,patient,root
 SET root="^"_$PIECE(name," "),kind=$EXTRACT(root,5,9),reply=$$REFUSED^MEVRIGHTS(kind)
 QUIT:reply'=""
 QUIT:'$$MAY^MEVSAVE(root,param,"","record")
 SET patient=$PIECE(@root@(param,0),"^")
 DO REMOVE^MEVFILES(root,param),CHANGED^MEVSAVE(patient,kind)
 QUIT
