MEVDEL ; Deletes records, after the user's rights were checked; the audit keeps them. The call's name says which kind.
 ;
ONLY ; Call: patient, of whom there is one record
 NEW kind,root
 SET root="^"_$PIECE(name," "),kind=$EXTRACT(root,5,9),reply=$$REFUSED^MEVMAY(kind)
 QUIT:reply'=""
 IF '$$KNOWN^MEVHOST(param) SET reply=$$NOPATIENT^MEVHOST(param) QUIT
 IF '$DATA(@root@(param,0)) DO NO^MEVSET("The record does not exist any more.") QUIT
 DO REMOVE^MEVDD(root,param),CHANGED^MEVSET(param,kind)
 QUIT
 ;
RECORD ; Call: record
 NEW kind,patient,root
 SET root="^"_$PIECE(name," "),kind=$EXTRACT(root,5,9),reply=$$REFUSED^MEVMAY(kind)
 QUIT:reply'=""
 QUIT:'$$MAY^MEVSET(root,param,"","record")
 SET patient=$PIECE(@root@(param,0),"^")
 DO REMOVE^MEVDD(root,param),CHANGED^MEVSET(patient,kind)
 QUIT
